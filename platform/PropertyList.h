#pragma once

#include <cstdint>
#include <variant>
#include <vector>

#include "platform/runtime/Object.h"

namespace zelto {

class Class;
class EventSource;

struct Color {
  std::uint8_t Red;
  std::uint8_t Green;
  std::uint8_t Blue;
};

using PropertyValue = std::variant<Int32, bool, Color, String>;

// A property that a class declares: its name and the alternative of PropertyValue that is its type.
struct Property {
  String Name;
  std::size_t Type = 0;
};

struct PropertyEntry {
  String Key;
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
