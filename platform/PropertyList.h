#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/runtime/Object.h"

namespace zelto {

class Class;
class EventSource;

struct Color {
  std::uint8_t Red = 0;
  std::uint8_t Green = 0;
  std::uint8_t Blue = 0;

  bool operator==(const Color&) const = default;
};

using PropertyValue = std::variant<Int32, bool, Color, String>;

struct Property {
  std::string_view Name;
  PropertyValue Type;  // any value of the property's type
  std::function<void(EventSource& object, const PropertyValue& value)> Set;
};

// A property of type T that `set(object, value)` sets on an object of class C.
template <class C, class T, class Setter>
Property PropertyOf(std::string_view name, Setter set) {
  return {name, T(), [set](EventSource& object, const PropertyValue& value) {
            set(static_cast<C&>(object), std::get<T>(value));
          }};
}

struct PropertyEntry {
  std::string_view Key;  // must point to static memory
  PropertyValue Value;
};

// Encodes the entries one after the other: the key, a blank, and the value encoded by its type.
String EncodePropertyList(const std::vector<PropertyEntry>& entries);

// Sets the object's properties in the order of the list. Sets none and throws
// UnsupportedFormatException if a key is not declared, a Boolean is neither 0 nor 1, or the list
// ends within an entry.
void RuntimeMassPropertySetter(EventSource& object, const String& list);

}  // namespace zelto
