#include "platform/Control.h"

#include "platform/PropertyLists.h"
#include "platform/Window.h"
#include "platform/runtime/Plugins.h"

namespace zelto {

const Class& Control::ClassTable() {
  static const Class table(
      {.Name = "Control", .Events = {{"Open", "(  )", {}}, {"Close", "(  )", {}}}});
  return table;
}

void Control::Close() { Raise("Close"); }

void Control::SetWindow(class Window* window) {
  mWindow = window;
  if (window) CreatePane();
}

void Control::CallOpenEvent() { Raise("Open"); }

Ref<class Window> Control::Window() const { return Ref<class Window>(mWindow); }

Ref<Object> Control::HandlerSelf() { return Window(); }

void RectControl::Refresh(bool) { PaneOf().Refresh(); }

WindowImp& RectControl::WindowImpOf() const { return Window()->Imp(); }

const Class& EditField::ClassTable() {
  static const Class table(
      {.Name = "EditField",
       .Base = &Control::ClassTable(),
       .Events = {{"DropObject", "( DragItem, Int32 )", {}}, {"TextChange", "(  )", {}}},
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
                            .Events = {{"Action", "(  )", {}}},
                            .Properties = PushButtonList::Schema()});
  return table;
}

const Class& BevelButton::ClassTable() {
  static const Class table({.Name = "BevelButton",
                            .Base = &Control::ClassTable(),
                            .Events = {{"Action", "(  )", {}}},
                            .Properties = BevelButtonList::Schema()});
  return table;
}

const Class& Canvas::ClassTable() {
  static const Class table({.Name = "Canvas",
                            .Base = &Control::ClassTable(),
                            .Events = {{"MouseDown", "( Int32, Int32 ) as Boolean", {}},
                                       {"MouseUp", "( Int32, Int32 )", {}}},
                            .Properties = CanvasList::Schema()});
  return table;
}

const Class& Timer::ClassTable() {
  static const Class table({.Name = "Timer", .Properties = TimerList::Schema()});
  return table;
}

struct BevelButtonPlugin {
  template <std::size_t Key>
  static void Set(BevelButton& button, const PropertyValue& value) {
    // The name of the property stands between "BevelButton." and ".Set".
    static constexpr auto name = PluginKeys.at(Key).substr(12, PluginKeys.at(Key).size() - 16);
    button.mPane->SetProperty(name, value);
  }
};

namespace {

// The plug-ins' controls need no set-up.
const PublishedEntrypoint setUp(
    "_", +[] {});

using Writer = void(BevelButton&, const PropertyValue&);

template <std::size_t... Key>
std::vector<PublishedEntrypoint> PublishWriters() {
  return {{PluginKeys.at(Key), BevelButtonPlugin::Set<Key>}...};
}

const auto writers = PublishWriters<
    PluginSlotOf("BevelButton.Caption.Set"), PluginSlotOf("BevelButton.CaptionAlign.Set"),
    PluginSlotOf("BevelButton.CaptionPlacement.Set"), PluginSlotOf("BevelButton.CaptionDelta.Set"),
    PluginSlotOf("BevelButton.IconAlign.Set"), PluginSlotOf("BevelButton.IconDX.Set"),
    PluginSlotOf("BevelButton.IconDY.Set"), PluginSlotOf("BevelButton.Value.Set"),
    PluginSlotOf("BevelButton.MenuValue.Set"), PluginSlotOf("BevelButton.TextFont.Set")>();

}  // namespace

void BevelButton::SetProperty(const String& name, const PropertyValue& value) {
  const String key = "BevelButton." + name + ".Set";
  for (std::size_t slot = 0; slot < PluginKeys.size(); ++slot) {
    if (PluginKeys.at(slot) == key.Bytes()) return Glink<Writer>(slot, *this, value);
  }
  RectControl::SetProperty(name, value);
}

void Timer::Period(Int32 milliseconds) {
  mPeriod = milliseconds;
  Restart();
}

void Timer::Mode(Int32 mode) {
  mMode = mode;
  Restart();
}

void Timer::SetProperty(const String& name, const PropertyValue& value) {
  if (name == "Period") Period(std::get<Int32>(value));
  if (name == "Mode") Mode(std::get<Int32>(value));
}

void Timer::Restart() {
  if (mMode == 0 || mPeriod <= 0) return mImp->Stop();
  mImp->Start(mPeriod, mMode == 2);
}

}  // namespace zelto
