#include "platform/EventSource.h"

#include <algorithm>

#include "platform/Framework.h"

namespace zelto {

namespace {

void Bind(std::vector<Event>& events, const Binding& binding) {
  const auto event = std::ranges::find(events, binding.Event, &Event::Name);
  if (event == events.end()) throw KeyNotFoundException(binding.Event);
  const bool fits = event->Signature.IsNil() || event->Signature == binding.Handler.Signature;
  if (!fits) throw TypeMismatchException(binding.Event);
  event->Handler = binding.Handler;
}

class MeScope {
 public:
  explicit MeScope(EventSource& object)
      : mMe(&object), mOuter(std::exchange(State().Me, &object)) {}
  MeScope(const MeScope&) = delete;
  MeScope& operator=(const MeScope&) = delete;
  ~MeScope() { State().Me = mOuter; }

 private:
  Ref<EventSource> mMe;
  EventSource* mOuter;
};

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

bool EventSource::Raise(std::string_view event, const Arguments& arguments) {
  const auto& events = mEvents.empty() ? ClassOf().Events() : mEvents;
  const auto found = std::ranges::find(events, event, &Event::Name);
  if (found == events.end()) throw KeyNotFoundException(event);
  if (!found->Handler.Call) return false;
  const auto handler = found->Handler.Call;  // a copy, because the handler can destroy the table
  const MeScope scope(*this);
  const Ref<Object> self = Self();
  return handler(*self, arguments);
}

Ref<EventSource> Me() { return Ref<EventSource>(State().Me); }

void InstallInstanceEventHandler(EventSource& object, const Binding& binding) {
  if (object.mEvents.empty()) object.mEvents = object.ClassOf().Events();
  Bind(object.mEvents, binding);
}

}  // namespace zelto
