#include "platform/Control.h"

#include "platform/PropertyLists.h"
#include "platform/Window.h"
#include "platform/runtime/Plugins.h"

namespace zelto {

const Class& Control::ClassTable() {
  static const Class table(
      {.Name = "Control", .Events = {{"CreatePane", "(  )"}, {"Open", "(  )"}, {"Close", "(  )"}}});
  return table;
}

void Control::Close() { Raise("Close"); }

void Control::SetWindow(class Window* window) {
  mWindow = window;
  if (window) Raise("CreatePane");
}

void Control::CallOpenEvent() { Raise("Open"); }

Ref<class Window> Control::Window() const { return Ref<class Window>(mWindow); }

void RectControl::SetWindow(class Window* window) {
  mPane = nullptr;
  Control::SetWindow(window);
}

void RectControl::CallOpenEvent() {
  PaneOf();
  Control::CallOpenEvent();
}

void RectControl::Refresh(bool) { PaneOf().Refresh(); }

Pane& RectControl::PaneOf() {
  auto& window = Window()->Imp();
  if (!mPane) mPane = NewPane(window);
  return *mPane;
}

const Class& EditField::ClassTable() {
  static const Class table(
      {.Name = "EditField",
       .Base = &Control::ClassTable(),
       .Events = {{"DropObject", "( DragItem, Int32 )"}, {"TextChange", "(  )"}},
       .Properties = EditFieldList::Schema()});
  return table;
}

const Class& StaticText::ClassTable() {
  static const Class table({.Name = "StaticText",
                            .Base = &Control::ClassTable(),
                            .Properties = StaticTextList::Schema()});
  return table;
}

const Class& PushButton::ClassTable() {
  static const Class table({.Name = "PushButton",
                            .Base = &Control::ClassTable(),
                            .Events = {{"Action", "(  )"}},
                            .Properties = PushButtonList::Schema()});
  return table;
}

const Class& BevelButton::ClassTable() {
  static const Class table({.Name = "BevelButton",
                            .Base = &Control::ClassTable(),
                            .Events = {{"Action", "(  )"}},
                            .Properties = BevelButtonList::Schema()});
  return table;
}

const Class& Canvas::ClassTable() {
  static const Class table(
      {.Name = "Canvas",
       .Base = &Control::ClassTable(),
       .Events = {{"MouseDown", "( Int32, Int32 ) as Boolean"}, {"MouseUp", "( Int32, Int32 )"}},
       .Properties = CanvasList::Schema()});
  return table;
}

const Class& Timer::ClassTable() {
  static const Class table({.Name = "Timer", .Properties = TimerList::Schema()});
  return table;
}

void EditField::Text(const String& text) {
  if (HasPane()) {
    PaneOf().SetText(text);
  } else {
    mState.Text = text;
  }
  Raise("TextChange");
}

struct BevelButtonPlugin {
  static void SetCaption(BevelButton& button, const String& caption) {
    button.Set(button.mState.Caption, caption);
  }
  static void SetTextFont(BevelButton& button, const String& family) {
    button.Set(button.mState.TextFont, family);
  }
  // Of no effect on this toolkit.
  template <class T>
  static void Ignore(BevelButton&, T) {}
};

void PublishBevelButton() {
  RuntimePublishPluginEntrypoints({
      {"_", +[] {}},  // the plug-ins' controls need no set-up
      {"BevelButton.Caption.Set", BevelButtonPlugin::SetCaption},
      {"BevelButton.CaptionAlign.Set", BevelButtonPlugin::Ignore<Int32>},
      {"BevelButton.CaptionPlacement.Set", BevelButtonPlugin::Ignore<Int32>},
      {"BevelButton.CaptionDelta.Set", BevelButtonPlugin::Ignore<Int32>},
      {"BevelButton.IconAlign.Set", BevelButtonPlugin::Ignore<Int32>},
      {"BevelButton.IconDX.Set", BevelButtonPlugin::Ignore<Int32>},
      {"BevelButton.IconDY.Set", BevelButtonPlugin::Ignore<Int32>},
      {"BevelButton.Value.Set", BevelButtonPlugin::Ignore<bool>},
      {"BevelButton.MenuValue.Set", BevelButtonPlugin::Ignore<Int32>},
      {"BevelButton.TextFont.Set", BevelButtonPlugin::SetTextFont},
  });
}

void Timer::Period(Int32 milliseconds) {
  mPeriod = milliseconds;
  Restart();
}

void Timer::Mode(Int32 mode) {
  mMode = mode;
  Restart();
}

void Timer::Restart() {
  if (mMode == 0 || mPeriod <= 0) return mImp->Stop();
  mImp->Start(mPeriod, mMode == 2);
}

}  // namespace zelto
