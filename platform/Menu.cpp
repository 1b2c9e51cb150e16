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

void MenuHandlers::Enable(const std::vector<Ref<MenuItem>>& items) const {
  for (const auto& item : items) {
    if (Find(item->Name())) item->Enable();
    RuntimeBackgroundTask();
  }
}

bool MenuHandlers::Call(Object& self, const String& itemName) const {
  const Method* handler = Find(itemName);
  return handler && handler->Call(self, {});
}

const Method* MenuHandlers::Find(const String& itemName) const {
  for (const auto& [name, handler] : mHandlers) {
    if (name == itemName) return &handler;
  }
  return nullptr;
}

}  // namespace zelto
