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

void EnableHandledItems(const std::vector<Ref<MenuItem>>& items,
                        const std::vector<Binding>& handlers) {
  for (const auto& item : items) {
    const bool isHandled =
        std::any_of(handlers.begin(), handlers.end(),
                    [&](const Binding& handler) { return handler.Event == item->Name(); });
    if (isHandled) item->Enable();
    RuntimeBackgroundTask();
  }
}

}  // namespace zelto
