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

// A property that a class declares.
struct Property {
  std::string_view Name;
  std::size_t Type = 0;  // the alternative of PropertyValue
  // Empty for a property without effect on this toolkit.
  std::function<void(EventSource& object, const PropertyValue& value)> Set;
};

// The property that the object of class C keeps in the member of its list.
template <class C, class List, class T>
Property StoredProperty(std::string_view name, T List::*member) {
  return {name, PropertyValue(T()).index(),
          [member](EventSource& object, const PropertyValue& value) {
            static_cast<C&>(object).Set(member, std::get<T>(value));
          }};
}

// The property that the setter writes; its type is the setter's argument.
template <class C, class T>
Property CalledProperty(std::string_view name, void (C::*setter)(T)) {
  using Value = std::remove_cvref_t<T>;
  return {name, PropertyValue(Value()).index(),
          [setter](EventSource& object, const PropertyValue& value) {
            (static_cast<C&>(object).*setter)(std::get<Value>(value));
          }};
}

struct PropertyEntry {
  std::string_view Key;  // of a static table or a literal
  PropertyValue Value;
};

// A list is its entries in a row: the key, a blank, and the value in the form of the key's type.
String EncodePropertyList(const std::vector<PropertyEntry>& entries);

// The entries under their declared names. Raises UnsupportedFormatException at a key that is not
// declared, a Boolean that is neither 0 nor 1, and a list that ends within an entry.
std::vector<PropertyEntry> DecodePropertyList(const String& list,
                                              const std::vector<Property>& declared);

// Sets the object's properties in the order of the list; a list that is refused sets none.
void RuntimeMassPropertySetter(EventSource& object, const String& list);

}  // namespace zelto
