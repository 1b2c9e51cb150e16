#pragma once

#include "platform/EventSource.h"
#include "platform/Picture.h"
#include "platform/Toolkit.h"
#include "platform/runtime/Plugins.h"

namespace zelto {

class Window;

// What sits in a window under a name. The window owns it; it knows its window.
class Control : public EventSource {
 public:
  static const Class& ClassTable();

  virtual void Close();
  // Gives the control its window, or nil when the window goes.
  virtual void SetWindow(class Window* window);
  virtual void CallOpenEvent();

  // Nil once the window has closed.
  Ref<class Window> Window() const;

 private:
  class Window* mWindow = nullptr;
};

// An object without a pane that sits in a window's control table.
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

  void Name(const String& name) { Set(mState.Name, name); }
  void Left(Int32 pixels) { Set(mState.Left, pixels); }
  void Top(Int32 pixels) { Set(mState.Top, pixels); }
  void Width(Int32 pixels) { Set(mState.Width, pixels); }
  void Height(Int32 pixels) { Set(mState.Height, pixels); }
  void TabIndex(Int32 index) { Set(mState.TabIndex, index); }
  // Whether Tab reaches the control.
  void TabStop(bool isStop) { Set(mState.TabStop, isStop); }
  // Whether a click gives it the focus.
  void AcceptFocus(bool accepts) { Set(mState.AcceptFocus, accepts); }
  void UseFocusRing(bool uses) { Set(mState.UseFocusRing, uses); }
  bool Enabled() const { return mState.Enabled; }
  void Enabled(bool enabled) { Set(mState.Enabled, enabled); }
  bool Visible() const { return mState.Visible; }
  void Visible(bool visible) { Set(mState.Visible, visible); }
  void HelpTag(const String& text) { Set(mState.HelpTag, text); }
  // What assistive technology calls the control.
  void Label(const String& label) { Set(mState.Label, label); }
  void TextFont(const String& family) { Set(mState.TextFont, family); }
  void TextSize(Int32 pixels) { Set(mState.TextSize, pixels); }
  void Bold(bool isBold) { Set(mState.Bold, isBold); }
  void Italic(bool isItalic) { Set(mState.Italic, isItalic); }
  void Underline(bool isUnderlined) { Set(mState.Underline, isUnderlined); }
  void TextColor(Color color) { Set(mState.TextColor, color); }

  void SetFocus() { PaneOf().SetFocus(); }
  void Refresh(bool erase);
  // Files of the registered types can be dropped on the control and arrive through DropObject.
  void AcceptFileDrop(const String& type) { PaneOf().AcceptFileDrop(type); }

 protected:
  explicit RectControl(ControlState& state) : mState(state) {}

  template <class T>
  void Set(T& property, const T& value) {
    property = value;
    if (mPane) mPane->Update();
  }
  // Made on first need, which comes after the property list. Raises NilObjectException when the
  // window has closed.
  Pane& PaneOf();
  bool HasPane() const { return bool(mPane); }

 private:
  virtual std::unique_ptr<Pane> NewPane(WindowImp& window) = 0;

  ControlState& mState;  // of the derived class
  std::unique_ptr<Pane> mPane;
};

class EditField : public RectControl {
 public:
  EditField() : RectControl(mState) { mState.AcceptFocus = true; }
  static const Class& ClassTable();
  const Class& ClassOf() const override { return ClassTable(); }

  // As it was written, byte for byte, until the user changes it.
  String Text() { return PaneOf().Text(); }
  // Raises TextChange before it returns, as typing does.
  void Text(const String& text);
  void SelectAll() { PaneOf().SelectAll(); }
  void ShowBalloon(const String& text) { PaneOf().ShowBalloon(text); }

  void Border(bool hasBorder) { Set(mState.Border, hasBorder); }
  // Of effect before the window opens.
  void Multiline(bool isMultiline) { Set(mState.Multiline, isMultiline); }
  void ScrollbarHorizontal(bool hasBar) { Set(mState.ScrollbarHorizontal, hasBar); }
  void ScrollbarVertical(bool hasBar) { Set(mState.ScrollbarVertical, hasBar); }
  void Password(bool isPassword) { Set(mState.Password, isPassword); }
  void ReadOnly(bool isReadOnly) { Set(mState.ReadOnly, isReadOnly); }
  void AcceptTabs(bool accepts) { Set(mState.AcceptTabs, accepts); }
  // The most characters that the user can enter; 0 sets no limit.
  void LimitText(Int32 characters) { Set(mState.LimitText, characters); }
  void Alignment(Int32 code) { Set(mState.Alignment, code); }

 private:
  std::unique_ptr<Pane> NewPane(WindowImp& window) override {
    return NewEditFieldPane(*this, mState, window);
  }
  EditFieldPane& PaneOf() { return static_cast<EditFieldPane&>(RectControl::PaneOf()); }

  EditFieldState mState;
};

class StaticText : public RectControl {
 public:
  StaticText() : RectControl(mState) { mState.TabStop = false; }
  static const Class& ClassTable();
  const Class& ClassOf() const override { return ClassTable(); }

  const String& Text() const { return mState.Text; }
  void Text(const String& text) { Set(mState.Text, text); }
  void TextAlign(Int32 code) { Set(mState.TextAlign, code); }
  void Multiline(bool isMultiline) { Set(mState.Multiline, isMultiline); }

 private:
  std::unique_ptr<Pane> NewPane(WindowImp& window) override {
    return NewStaticTextPane(mState, window);
  }

  StaticTextState mState;
};

class PushButton : public RectControl {
 public:
  PushButton() : RectControl(mState) {}
  static const Class& ClassTable();
  const Class& ClassOf() const override { return ClassTable(); }

  void Caption(const String& caption) { Set(mState.Caption, caption); }
  // Return presses the default button of the window, Esc the one for cancelling.
  void Default(bool isDefault) { Set(mState.Default, isDefault); }
  void Cancel(bool isCancel) { Set(mState.Cancel, isCancel); }

 private:
  std::unique_ptr<Pane> NewPane(WindowImp& window) override {
    return NewPushButtonPane(*this, mState, window);
  }

  ButtonState mState;
};

// The slot whose key is "BevelButton.", the property and ".Set".
struct BevelButtonWriter {
  consteval BevelButtonWriter(std::string_view property) {
    const auto isKey = [=](std::string_view key) {
      return key.starts_with("BevelButton.") && key.ends_with(".Set") &&
             key.substr(12, key.size() - 16) == property;
    };
    while (!isKey(PluginKeys.at(Slot))) ++Slot;
  }
  consteval BevelButtonWriter(const char* property)
      : BevelButtonWriter(std::string_view(property)) {}

  std::size_t Slot = 0;
};

// A control of a plug-in: the writers of its own properties are entries of the plug-in.
class BevelButton : public RectControl {
 public:
  BevelButton() : RectControl(mState) {}
  static const Class& ClassTable();
  const Class& ClassOf() const override { return ClassTable(); }

  void Caption(const String& caption) { Write<const String&>("Caption", caption); }
  void CaptionAlign(Int32 code) { Write<Int32>("CaptionAlign", code); }
  void CaptionPlacement(Int32 code) { Write<Int32>("CaptionPlacement", code); }
  void CaptionDelta(Int32 pixels) { Write<Int32>("CaptionDelta", pixels); }
  void IconAlign(Int32 code) { Write<Int32>("IconAlign", code); }
  void IconDX(Int32 pixels) { Write<Int32>("IconDX", pixels); }
  void IconDY(Int32 pixels) { Write<Int32>("IconDY", pixels); }
  void Value(bool isPressed) { Write<bool>("Value", isPressed); }
  void MenuValue(Int32 row) { Write<Int32>("MenuValue", row); }
  void TextFont(const String& family) { Write<const String&>("TextFont", family); }

 private:
  friend struct BevelButtonPlugin;

  template <class T>
  void Write(BevelButtonWriter writer, T value) {
    Glink<void(BevelButton&, T)>(writer.Slot, *this, value);
  }

  std::unique_ptr<Pane> NewPane(WindowImp& window) override {
    return NewBevelButtonPane(*this, mState, window);
  }

  ButtonState mState;
};

void PublishBevelButton();

class Canvas : public RectControl {
 public:
  Canvas() : RectControl(mState) {}
  static const Class& ClassTable();
  const Class& ClassOf() const override { return ClassTable(); }

  // The picture that the canvas shows; nil shows nothing.
  void Backdrop(const Ref<Picture>& picture) { Set(mState.Backdrop, picture); }

 private:
  std::unique_ptr<Pane> NewPane(WindowImp& window) override {
    return NewCanvasPane(*this, mState, window);
  }

  CanvasState mState;
};

class Timer : public EventSource {
 public:
  static const Class& ClassTable();
  const Class& ClassOf() const override { return ClassTable(); }
  virtual void Constructor() {}

  void Period(Int32 milliseconds);
  // 0 is off, 1 fires once after the period, 2 after each period.
  void Mode(Int32 mode);
  virtual void Fire() {}

 private:
  void Restart();

  Int32 mPeriod = 0;
  Int32 mMode = 0;
  std::unique_ptr<TimerImp> mImp = NewTimerImp(*this);
};

}  // namespace zelto
