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
  std::string_view Name;
  String Signature = {};  // nil: a handler of any signature can be bound
  Method Handler = {};    // empty: not bound
};

struct Binding {
  std::string_view Event;
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
  bool Raise(std::string_view event, const Arguments& arguments = {});

 private:
  friend void InstallInstanceEventHandler(EventSource& object, const Binding& binding);

  std::vector<Event> mEvents;  // the class's until a handler of this object alone is installed
};

// Binds the handler to the event of this one object. Raises KeyNotFoundException when the object
// has no such event, TypeMismatchException when the event's signature is another.
void InstallInstanceEventHandler(EventSource& object, const Binding& binding);

// The object whose event the running handler handles; the window's operation that handles it has
// the window as `this`. Nil outside a handler.
Ref<EventSource> Me();

namespace detail {

// How a signature names a handler's argument, which is a Ref where nothing else is said.
template <class T>
inline constexpr std::string_view ParameterName = T::Target::TypeName;
template <>
inline constexpr std::string_view ParameterName<Int32> = "Int32";
template <>
inline constexpr std::string_view ParameterName<bool> = "Boolean";
template <>
inline constexpr std::string_view ParameterName<const RuntimeException*> = "RuntimeException";

template <class T>
T ParameterFrom(const Argument& argument) {
  if constexpr (requires { typename T::Target; }) {
    return RuntimeCheckCast<typename T::Target>(std::get<Ref<Object>>(argument));
  } else {
    return std::get<T>(argument);
  }
}

// Such as "(  )" or "( Int32, Int32 ) as Boolean".
template <class R, class... A>
String Signature() {
  std::string names;
  ((names.append(names.empty() ? "" : ", ").append(ParameterName<A>)), ...);
  return "( " + names + " )" + (std::is_void_v<R> ? "" : " as Boolean");
}

template <class W, class R, class... A, std::size_t... I>
bool Invoke(W& receiver, R (W::*operation)(A...), const Arguments& arguments,
            std::index_sequence<I...>) {
  if constexpr (std::is_void_v<R>) {
    (receiver.*operation)(ParameterFrom<std::remove_cvref_t<A>>(arguments.at(I))...);
    return false;
  } else {
    return (receiver.*operation)(ParameterFrom<std::remove_cvref_t<A>>(arguments.at(I))...);
  }
}

}  // namespace detail

template <class W, class R, class... A>
Method RuntimeCreateDelegate(R (W::*operation)(A...)) {
  return {detail::Signature<R, std::remove_cvref_t<A>...>(),
          [operation](Object& self, const Arguments& arguments) {
            auto* receiver = dynamic_cast<W*>(&self);
            if (!receiver) throw IllegalCastException();
            return detail::Invoke(*receiver, operation, arguments, std::index_sequence_for<A...>());
          }};
}

template <class Operation>
Binding On(std::string_view event, Operation handler) {
  return {event, RuntimeCreateDelegate(handler)};
}

}  // namespace zelto
