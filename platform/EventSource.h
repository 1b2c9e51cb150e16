#pragma once

#include <functional>
#include <variant>
#include <vector>

#include "platform/PropertyList.h"
#include "platform/runtime/Object.h"

namespace zelto {

using Argument = std::variant<Int32, bool, Ref<Object>, const RuntimeException*>;
using Arguments = std::vector<Argument>;

// A type-erased member function.
struct Method {
  String Signature;
  // Returns False for a void member function.
  std::function<bool(Object& self, const Arguments&)> Call;
};

struct Event {
  std::string_view Name;
  String Signature = {};  // nil accepts a handler of any signature
  Method Handler = {};    // empty if no handler is bound
};

struct Binding {
  std::string_view Event;
  Method Handler;
};

// The metadata of a class: its name, its events with their handlers, and the properties that a list
// can set. The events include those of the base class.
class Class {
 public:
  struct Declaration {
    String Name;
    const Class* Base = nullptr;
    std::vector<Event> Events;
    std::vector<Property> Properties;  // if empty, the base class's properties apply
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

// An object with events and properties.
class EventSource : public Object {
 public:
  virtual const Class& ClassOf() const = 0;

  // The object on which the handlers of its events are called.
  virtual Ref<Object> Self() { return Ref<Object>(this); }

  // Calls the event's handler and returns its result. Returns False if the event has no handler.
  // Throws KeyNotFoundException if the class has no such event.
  bool Raise(std::string_view event, const Arguments& arguments = {});

 private:
  friend void InstallInstanceEventHandler(EventSource& object, const Binding& binding);

  std::vector<Event> mEvents;  // if empty, the events of the class apply
};

// Binds a handler to an event of this object only. Throws KeyNotFoundException if there is no such
// event and TypeMismatchException if the signatures differ.
void InstallInstanceEventHandler(EventSource& object, const Binding& binding);

// The object that raised the event of the running handler. Nil outside a handler. In the handler of
// a control's event, `this` is the window.
Ref<EventSource> Me();

namespace detail {

// The name of a parameter type in a signature. The primary template handles Ref<T>.
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

// For example "(  )" or "( Int32, Int32 ) as Boolean".
template <class R, class... A>
String Signature() {
  std::string names;
  ((names.append(names.empty() ? "" : ", ").append(ParameterName<A>)), ...);
  return "( " + names + " )" + (std::is_void_v<R> ? "" : " as Boolean");
}

}  // namespace detail

template <class W, class R, class... A>
Method RuntimeCreateDelegate(R (W::*operation)(A...)) {
  const auto call = [operation](Object& self, const Arguments& arguments) {
    auto* receiver = dynamic_cast<W*>(&self);
    if (!receiver) throw IllegalCastException();
    const auto pass = [&]<std::size_t... I>(std::index_sequence<I...>) {
      return (receiver->*operation)(
          detail::ParameterFrom<std::remove_cvref_t<A>>(arguments.at(I))...);
    };
    if constexpr (!std::is_void_v<R>) return pass(std::index_sequence_for<A...>());
    pass(std::index_sequence_for<A...>());
    return false;
  };
  return {detail::Signature<R, std::remove_cvref_t<A>...>(), call};
}

template <class Operation>
Binding On(std::string_view event, Operation handler) {
  return {event, RuntimeCreateDelegate(handler)};
}

}  // namespace zelto
