#include "platform/Control.h"

#include "platform/Window.h"

namespace zelto {

namespace {

template <class T, T BevelButtonList::*Property>
void Write(BevelButton& button, const T& value) {
  button.Set(Property, value);
}

}  // namespace

const Class& Control::ClassTable() {
  static const Class table(
      {.Name = "Control", .Events = {{"CreatePane", "(  )"}, {"Open", "(  )"}, {"Close", "(  )"}}});
  return table;
}

void Control::SetWindow(class Window* window) {
  mWindow = window;
  if (window) Raise("CreatePane");
}

Ref<class Window> Control::Window() const { return Ref<class Window>(mWindow); }

Ref<Object> Control::Self() { return Window(); }

void RectControl::SetWindow(class Window* window) {
  mPane = nullptr;
  Control::SetWindow(window);
}

void RectControl::CallOpenEvent() {
  PaneOf();
  Control::CallOpenEvent();
}

Pane& RectControl::PaneOf() {
  auto& window = Window()->Imp();
  if (!mPane) {
    mPane = MakePane(window);
    mPane->SetLabel(mLabel);
  }
  return *mPane;
}

const Class& Timer::ClassTable() {
  static const Class table({.Name = "Timer", .Properties = TimerList::Schema()});
  return table;
}

void EditField::Text(const String& text) {
  if (HasPane()) {
    PaneOf().SetText(text);
  } else {
    mProperties.Text = text;
  }
  Raise("TextChange");
}

void PublishBevelButton() {
  using List = BevelButtonList;
  RuntimePublishPluginEntrypoints({
      {"_", +[] {}},  // the plug-ins' controls need no set-up
      {"BevelButton.Caption.Set", Write<String, &List::Caption>},
      {"BevelButton.CaptionAlign.Set", Write<Int32, &List::CaptionAlign>},
      {"BevelButton.CaptionPlacement.Set", Write<Int32, &List::CaptionPlacement>},
      {"BevelButton.CaptionDelta.Set", Write<Int32, &List::CaptionDelta>},
      {"BevelButton.IconAlign.Set", Write<Int32, &List::IconAlign>},
      {"BevelButton.IconDX.Set", Write<Int32, &List::IconDX>},
      {"BevelButton.IconDY.Set", Write<Int32, &List::IconDY>},
      {"BevelButton.Value.Set", Write<bool, &List::Value>},
      {"BevelButton.MenuValue.Set", Write<Int32, &List::MenuValue>},
      {"BevelButton.TextFont.Set", Write<String, &List::TextFont>},
  });
}

void Timer::Start(Int32 period, Int32 mode) {
  if (mode == 0 || period <= 0) return mImp->Stop();
  mImp->Start(period, mode == 2);
}

}  // namespace zelto
