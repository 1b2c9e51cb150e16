#pragma once

#include "platform/EventSource.h"
#include "platform/Picture.h"
#include "platform/PropertyLists.h"
#include "platform/Toolkit.h"

namespace zelto {

class Window;

// A named object in a window. The window owns it.
class Control : public EventSource {
 public:
  static const Class& ClassTable();

  virtual void Close() { Raise("Close"); }
  // Sets the owner. The window passes null when it releases the control.
  virtual void SetWindow(class Window* window);
  virtual void CallOpenEvent() { Raise("Open"); }

  // Nil once the window has closed.
  Ref<class Window> Window() const;
  Ref<Object> Self() override;

 private:
  class Window* mWindow = nullptr;
};

// An object of a window that has a name but is not a Control, for example a timer.
class PaneChild {
 public:
  virtual ~PaneChild() = default;
  virtual void SetWindow(class Window* window) = 0;
  virtual Ref<class Window> Window() const = 0;
  virtual Int32 Index() const = 0;
  virtual void SetIndex(Int32 index) = 0;
};

class RectControl : public Control {
 public:
  virtual void Constructor() {}
  void SetWindow(class Window* window) override;
  void CallOpenEvent() override;

  // Sets the accessible name. Has no effect after the pane has been created.
  void Label(const String& label) { mLabel = label; }

  void SetFocus() { PaneOf().SetFocus(); }
  void Refresh(bool) { PaneOf().Refresh(); }
  // Accepts drops of local files of the registered type. A drop raises DropObject.
  void AcceptFileDrop(const String& type) { PaneOf().AcceptFileDrop(type); }
  void ShowBalloon(const String& text, BalloonEnd end = BalloonEnd::NextKey) {
    PaneOf().ShowBalloon(text, end);
  }

 protected:
  void UpdatePane() {
    if (mPane) mPane->Update();
  }
  // Created on first use. Throws NilObjectException if the window has closed.
  Pane& PaneOf();
  bool HasPane() const { return bool(mPane); }

 private:
  virtual std::unique_ptr<Pane> MakePane(WindowImp& window) = 0;

  String mLabel;
  std::unique_ptr<Pane> mPane;
};

// A control that stores its properties in a list struct. Geometry is in pixels.
template <class List>
class ListControl : public RectControl {
 public:
  static const Class& ClassTable() {
    static const Class table({.Name = List::ClassName,
                              .Base = &Control::ClassTable(),
                              .Events = List::Class::OwnEvents(),
                              .Properties = List::Schema()});
    return table;
  }
  const Class& ClassOf() const override { return ClassTable(); }

  const List& Properties() const { return mProperties; }
  // Stores a value without showing it.
  template <class T>
  void Store(T List::*property, const std::type_identity_t<T>& value) {
    mProperties.*property = value;
  }
  template <class T>
  void Set(T List::*property, const std::type_identity_t<T>& value) {
    Store(property, value);
    UpdatePane();
  }

  bool Enabled() const { return mProperties.Enabled; }
  void Enabled(bool enabled) { Set(&List::Enabled, enabled); }

 protected:
  List mProperties;

 private:
  std::unique_ptr<Pane> MakePane(WindowImp& window) override {
    return NewPane(static_cast<typename List::Class&>(*this), window);
  }
};

class EditField : public ListControl<EditFieldList> {
 public:
  static std::vector<Event> OwnEvents() {
    return {{"DropObject", "( DragItem, Int32 )"}, {"TextChange", "(  )"}};
  }

  // Until the user changes the text, returns exactly the bytes of the last write.
  String Text() { return PaneOf().Text(); }
  // Like typing, raises TextChange. The handler ends before this call returns.
  void Text(const String& text);
  void SelectAll() { PaneOf().SelectAll(); }

 private:
  EditFieldPane& PaneOf() { return static_cast<EditFieldPane&>(RectControl::PaneOf()); }
};

class StaticText : public ListControl<StaticTextList> {
 public:
  static std::vector<Event> OwnEvents() { return {}; }

  const String& Text() const { return mProperties.Text; }
  void Text(const String& text) { Set(&StaticTextList::Text, text); }
};

class PushButton : public ListControl<PushButtonList> {
 public:
  static std::vector<Event> OwnEvents() { return {{"Action", "(  )"}}; }
};

// A control of a plug-in, whose entry points write the PLUGIN properties.
class BevelButton : public ListControl<BevelButtonList> {
 public:
  static std::vector<Event> OwnEvents() { return {{"Action", "(  )"}}; }

  template <class T>
  static Property PluginProperty(std::string_view name, std::size_t slot) {
    return PropertyOf<BevelButton, T>(name, [slot](BevelButton& button, const T& value) {
      Glink<void(BevelButton&, const T&)>(slot, button, value);
    });
  }
};

void PublishBevelButton();

class Canvas : public ListControl<CanvasList> {
 public:
  static std::vector<Event> OwnEvents() {
    return {{"MouseDown", "( Int32, Int32 ) as Boolean"}, {"MouseUp", "( Int32, Int32 )"}};
  }

  // The picture of the canvas. Nil shows nothing.
  const Ref<Picture>& Backdrop() const { return mBackdrop; }
  void Backdrop(const Ref<Picture>& picture) {
    mBackdrop = picture;
    UpdatePane();
  }

 private:
  Ref<Picture> mBackdrop;
};

class Timer : public EventSource {
 public:
  static const Class& ClassTable();
  const Class& ClassOf() const override { return ClassTable(); }
  virtual void Constructor() {}

  void Period(Int32 milliseconds) { Start(mPeriod = milliseconds, mMode); }
  // 0: off. 1: fires once after the period. 2: fires after each period.
  void Mode(Int32 mode) { Start(mPeriod, mMode = mode); }
  virtual void Fire() {}

 private:
  void Start(Int32 period, Int32 mode);

  Int32 mPeriod = 0;
  Int32 mMode = 0;
  std::unique_ptr<TimerImp> mImp = NewTimerImp(*this);
};

}  // namespace zelto
