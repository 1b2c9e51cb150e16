#include "platform/Menu.h"

#include <algorithm>

#include "platform/Application.h"
#include "platform/runtime/Wait.h"

namespace zelto {

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

bool QuitMenuItem::Event_Action() { Quit(0); }

void MenuTarget::EnableMenuItems(const std::vector<Ref<MenuItem>>& items) {
  Raise("EnableMenuItems");
  for (const auto& item : items) {
    if (FindMenuHandler(item->Name())) item->Enable();
    RuntimeBackgroundTask();
  }
}

bool MenuTarget::CallMenuHandler(const String& name) {
  const Method* handler = FindMenuHandler(name);
  return handler && handler->Call(*this, {});
}

const Method* MenuTarget::FindMenuHandler(const String& name) const {
  for (const auto& [key, handler] : mMenuHandlers) {
    if (key == name) return &handler;
  }
  return nullptr;
}

}  // namespace zelto
