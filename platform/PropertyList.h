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
  std::size_t Type = 0;  // the index of an alternative of PropertyValue
  // Empty if the property has no effect on this toolkit.
  std::function<void(EventSource& object, const PropertyValue& value)> Set;
};

// A property that an object of class C stores in a member of its list struct.
template <class C, class List, class T>
Property StoredProperty(std::string_view name, T List::*member) {
  return {name, PropertyValue(T()).index(),
          [member](EventSource& object, const PropertyValue& value) {
            static_cast<C&>(object).Set(member, std::get<T>(value));
          }};
}

// A property with a setter. Its type is that of the setter's parameter.
template <class C, class T>
Property CalledProperty(std::string_view name, void (C::*setter)(T)) {
  using Value = std::remove_cvref_t<T>;
  return {name, PropertyValue(Value()).index(),
          [setter](EventSource& object, const PropertyValue& value) {
            (static_cast<C&>(object).*setter)(std::get<Value>(value));
          }};
}

struct PropertyEntry {
  std::string_view Key;  // must point to static memory
  PropertyValue Value;
};

// Encodes the entries one after the other: the key, a blank, and the value encoded by its type.
String EncodePropertyList(const std::vector<PropertyEntry>& entries);

// Returns the entries with their declared names. Throws UnsupportedFormatException if a key is not
// declared, a Boolean is neither 0 nor 1, or the list ends within an entry.
std::vector<PropertyEntry> DecodePropertyList(const String& list,
                                              const std::vector<Property>& declared);

// Sets the object's properties in the order of the list. Sets none if the list is malformed.
void RuntimeMassPropertySetter(EventSource& object, const String& list);

}  // namespace zelto
