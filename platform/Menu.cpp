#include "platform/Menu.h"

#include <algorithm>

#include "platform/Application.h"
#include "platform/runtime/Wait.h"

namespace zelto {

const Class& MenuItem::ClassTable() {
  static const Class table({.Name = "MenuItem"});
  return table;
}

const Class& MenuBar::ClassTable() {
  static const Class table({.Name = "MenuBar", .Base = &MenuItem::ClassTable()});
  return table;
}

Ref<MenuItem> MenuItem::Child(const String& name) const {
  const auto found = std::find_if(mItems.begin(), mItems.end(),
                                  [&](const auto& item) { return item->Name() == name; });
  return found == mItems.end() ? nullptr : *found;
}

Ref<MenuItem> MenuItem::Lookup(const String& name) const {
  if (auto child = Child(name)) return child;
  for (const auto& item : mItems) {
    if (auto found = item->Lookup(name)) return found;
  }
  return nullptr;
}

bool QuitMenuItem::Event_Action() { return QuitMenuAction(*this); }

void MenuTarget::EnableMenuItems(const std::vector<Ref<MenuItem>>& items) {
  Raise("EnableMenuItems");
  for (const auto& item : items) {
    if (ValueOf(mMenuHandlers, item->Name()).Call) item->Enable();
    RuntimeBackgroundTask();
  }
}

bool MenuTarget::CallMenuHandler(const String& name) {
  const auto handler = ValueOf(mMenuHandlers, name).Call;
  return handler && handler(*this, {});
}

}  // namespace zelto
