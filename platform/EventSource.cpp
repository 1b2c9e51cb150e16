#include "platform/EventSource.h"

#include <algorithm>

namespace zelto {

namespace {

void Bind(std::vector<Event>& events, const Binding& binding) {
  const auto event = std::find_if(events.begin(), events.end(),
                                  [&](const Event& each) { return each.Name == binding.Event; });
  if (event == events.end()) throw KeyNotFoundException(binding.Event);
  if (event->Signature != binding.Handler.Signature) throw TypeMismatchException(binding.Event);
  event->Handler = binding.Handler;
}

}  // namespace

Class::Class(Declaration declaration)
    : mName(std::move(declaration.Name)), mProperties(std::move(declaration.Properties)) {
  if (declaration.Base) {
    mEvents = declaration.Base->mEvents;
    if (mProperties.empty()) mProperties = declaration.Base->mProperties;
  }
  mEvents.insert(mEvents.end(), declaration.Events.begin(), declaration.Events.end());
  for (const auto& binding : declaration.Handlers) Bind(mEvents, binding);
}

bool EventSource::Raise(const String& event, const Arguments& arguments) {
  const auto& events = mEvents.empty() ? ClassOf().Events() : mEvents;
  const auto found = std::find_if(events.begin(), events.end(),
                                  [&](const Event& each) { return each.Name == event; });
  if (found == events.end()) throw KeyNotFoundException(event);
  if (!found->Handler.Call) return false;
  const auto handler = found->Handler.Call;  // the table may go while the handler runs
  const Ref<Object> self = HandlerSelf();
  return handler(*self, arguments);
}

void InstallInstanceEventHandler(EventSource& object, const Binding& binding) {
  if (object.mEvents.empty()) object.mEvents = object.ClassOf().Events();
  Bind(object.mEvents, binding);
}

}  // namespace zelto
