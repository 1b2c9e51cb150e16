#pragma once

#include <functional>
#include <variant>
#include <vector>

#include "platform/PropertyList.h"
#include "platform/runtime/Object.h"

namespace zelto {

using Argument = std::variant<Int32, bool, Ref<Object>, const RuntimeException*>;
using Arguments = std::vector<Argument>;

// An operation of a class, ready to be called on any object of it.
struct Method {
  String Signature;
  // The result is False for an operation that has none.
  std::function<bool(Object& self, const Arguments&)> Call;
};

struct Event {
  String Name;
  String Signature;
  Method Handler;  // empty: not bound
};

struct Binding {
  String Event;
  Method Handler;
};

// What all objects of a class share: the name, the events with the class's own handlers, the
// properties that a list can set. The base class's events stand first.
class Class {
 public:
  struct Declaration {
    String Name;
    const Class* Base = nullptr;
    std::vector<Event> Events;
    std::vector<Property> Properties;  // nil: the base class's
    std::vector<Binding> Handlers;
  };

  explicit Class(Declaration declaration);

  const String& Name() const { return mName; }
  const std::vector<Event>& Events() const { return mEvents; }
  const std::vector<Property>& Properties() const { return mProperties; }

 private:
  String mName;
  std::vector<Event> mEvents;
  std::vector<Property> mProperties;
};

// An object with events and with properties that a list can set.
class EventSource : public Object {
 public:
  virtual const Class& ClassOf() const = 0;

  // Calls the event's handler, if it has one. The result is the handler's, or False.
  bool Raise(const String& event, const Arguments& arguments = {});

  // The object whose operation a handler of this object's events is.
  virtual Ref<Object> HandlerSelf() { return Ref<Object>(this); }

  virtual void SetProperty(const String& name, const PropertyValue& value) = 0;

 private:
  friend void InstallInstanceEventHandler(EventSource& object, const Binding& binding);

  std::vector<Event> mEvents;  // the class's until a handler of this object alone is installed
};

// Binds the handler to the event of this one object. Raises KeyNotFoundException when the object
// has no such event, TypeMismatchException when the event's signature is another.
void InstallInstanceEventHandler(EventSource& object, const Binding& binding);

namespace detail {

template <class T>
struct Unpack {
  static T From(const Argument& argument) { return std::get<T>(argument); }
};

template <class T>
struct Unpack<Ref<T>> {
  static Ref<T> From(const Argument& argument) {
    return RuntimeCheckCast<T>(std::get<Ref<Object>>(argument));
  }
};

template <class W, class R, class... A, std::size_t... I>
bool Invoke(W& receiver, R (W::*operation)(A...), const Arguments& arguments,
            std::index_sequence<I...>) {
  if constexpr (std::is_void_v<R>) {
    (receiver.*operation)(Unpack<std::remove_cvref_t<A>>::From(arguments.at(I))...);
    return false;
  } else {
    return (receiver.*operation)(Unpack<std::remove_cvref_t<A>>::From(arguments.at(I))...);
  }
}

}  // namespace detail

// The signature is the text of the event's arguments, such as "(  )".
template <class W, class R, class... A>
Method RuntimeCreateDelegate(R (W::*operation)(A...), String signature) {
  return {std::move(signature), [operation](Object& self, const Arguments& arguments) {
            auto* receiver = dynamic_cast<W*>(&self);
            if (!receiver) throw IllegalCastException();
            return detail::Invoke(*receiver, operation, arguments, std::index_sequence_for<A...>());
          }};
}

// For an event without arguments.
template <class W>
Binding On(const char* event, void (W::*operation)()) {
  return {event, RuntimeCreateDelegate(operation, "(  )")};
}

}  // namespace zelto
