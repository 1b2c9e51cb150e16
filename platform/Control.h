#pragma once

#include "platform/EventSource.h"
#include "platform/Picture.h"
#include "platform/Toolkit.h"

namespace zelto {

class Window;

// What sits in a window under a name. The window owns it; it knows its window.
class Control : public EventSource {
 public:
  static const Class& ClassTable();

  virtual void Close();
  // Gives the control its window, which outlives it, and its pane there.
  virtual void SetWindow(class Window* window);
  virtual void CallOpenEvent();

  Ref<class Window> Window() const;
  Ref<Object> HandlerSelf() override;

 protected:
  virtual void CreatePane() = 0;

 private:
  class Window* mWindow = nullptr;
};

// An object without a pane that sits in a window's control table.
class PaneChild {
 public:
  virtual ~PaneChild() = default;
  virtual void SetWindow(class Window* window) = 0;
  virtual Ref<class Window> Window() const = 0;
};

class RectControl : public Control {
 public:
  virtual void Constructor() {}

  bool Enabled() const { return PaneOf().Enabled(); }
  void Enabled(bool enabled) { SetProperty("Enabled", enabled); }
  bool Visible() const { return PaneOf().Visible(); }
  void SetFocus() { PaneOf().SetFocus(); }
  void Refresh(bool erase);
  // Files of the registered types can be dropped on the control and arrive through DropObject.
  void AcceptFileDrop(const String& type) { PaneOf().AcceptFileDrop(type); }
  // What assistive technology calls the control.
  void Label(const String& label) { PaneOf().SetLabel(label); }
  void SetProperty(const String& name, const PropertyValue& value) override {
    PaneOf().SetProperty(name, value);
  }

 protected:
  // Never without a pane once the control has its window.
  virtual Pane& PaneOf() const = 0;
  WindowImp& WindowImpOf() const;
};

class EditField : public RectControl {
 public:
  static const Class& ClassTable();
  const Class& ClassOf() const override { return ClassTable(); }

  // As it was written, byte for byte, until the user changes it.
  String Text() const { return mPane->Text(); }
  // Raises TextChange before it returns, as typing does.
  void Text(const String& text) { mPane->SetText(text); }
  void SelectAll() { mPane->SelectAll(); }

 private:
  void CreatePane() override { mPane = NewEditFieldPane(*this, WindowImpOf()); }
  Pane& PaneOf() const override { return *mPane; }

  std::unique_ptr<EditFieldPane> mPane;
};

class StaticText : public RectControl {
 public:
  static const Class& ClassTable();
  const Class& ClassOf() const override { return ClassTable(); }

  String Text() const { return mPane->Text(); }
  void Text(const String& text) { mPane->SetText(text); }

 private:
  void CreatePane() override { mPane = NewStaticTextPane(WindowImpOf()); }
  Pane& PaneOf() const override { return *mPane; }

  std::unique_ptr<TextPane> mPane;
};

class PushButton : public RectControl {
 public:
  static const Class& ClassTable();
  const Class& ClassOf() const override { return ClassTable(); }

 private:
  void CreatePane() override { mPane = NewPushButtonPane(*this, WindowImpOf()); }
  Pane& PaneOf() const override { return *mPane; }

  std::unique_ptr<Pane> mPane;
};

// A control of a plug-in: the writers of its own properties are reached under their keys.
class BevelButton : public RectControl {
 public:
  static const Class& ClassTable();
  const Class& ClassOf() const override { return ClassTable(); }

  void SetProperty(const String& name, const PropertyValue& value) override;

 private:
  friend struct BevelButtonPlugin;

  void CreatePane() override { mPane = NewBevelButtonPane(*this, WindowImpOf()); }
  Pane& PaneOf() const override { return *mPane; }

  std::unique_ptr<Pane> mPane;
};

class Canvas : public RectControl {
 public:
  static const Class& ClassTable();
  const Class& ClassOf() const override { return ClassTable(); }

  // The picture that the canvas shows; nil shows nothing.
  void Backdrop(const Ref<Picture>& picture) { mPane->SetBackdrop(picture); }

 private:
  void CreatePane() override { mPane = NewCanvasPane(*this, WindowImpOf()); }
  Pane& PaneOf() const override { return *mPane; }

  std::unique_ptr<CanvasPane> mPane;
};

class Timer : public EventSource {
 public:
  static const Class& ClassTable();
  const Class& ClassOf() const override { return ClassTable(); }

  void Period(Int32 milliseconds);
  // 0 is off, 1 fires once after the period, 2 after each period.
  void Mode(Int32 mode);
  virtual void Fire() {}
  void SetProperty(const String& name, const PropertyValue& value) override;

 private:
  void Restart();

  Int32 mPeriod = 0;
  Int32 mMode = 0;
  std::unique_ptr<TimerImp> mImp = NewTimerImp(*this);
};

}  // namespace zelto
