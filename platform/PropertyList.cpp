#include "platform/PropertyList.h"

#include <algorithm>

#include "platform/EventSource.h"

namespace zelto {

namespace {

void AppendBigEndian(std::string& bytes, std::uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift);
}

struct Encoder {
  std::string& Bytes;

  void operator()(Int32 value) { AppendBigEndian(Bytes, static_cast<std::uint32_t>(value)); }
  void operator()(bool value) { Bytes += value ? '\1' : '\0'; }
  void operator()(Color value) {
    for (const auto part : {value.Red, value.Green, value.Blue}) Bytes += static_cast<char>(part);
  }
  void operator()(const String& value) {
    AppendBigEndian(Bytes, static_cast<std::uint32_t>(LenB(value)));
    Bytes += value.Bytes();
  }
};

class Reader {
 public:
  explicit Reader(const String& list) : mRest(list.Bytes()) {}

  bool AtEnd() const { return mRest.empty(); }

  std::string_view TakeKey() {
    const auto key = Take(std::min(mRest.find(' '), mRest.size()));
    Take(1);
    return key;
  }

  // Each overload reads a value of the type of its argument.
  PropertyValue operator()(Int32) { return static_cast<Int32>(TakeBigEndian()); }
  PropertyValue operator()(bool) {
    const char byte = Take(1).front();
    if (byte != 0 && byte != 1) throw UnsupportedFormatException("a Boolean is neither 0 nor 1");
    return byte == 1;
  }
  PropertyValue operator()(Color) {
    const auto bytes = Take(3);
    const auto part = [=](std::size_t at) { return static_cast<std::uint8_t>(bytes[at]); };
    return Color{part(0), part(1), part(2)};
  }
  PropertyValue operator()(const String&) { return String(Take(TakeBigEndian())); }

 private:
  std::string_view Take(std::size_t count) {
    if (count > mRest.size()) throw UnsupportedFormatException("the list ends within an entry");
    const auto taken = mRest.substr(0, count);
    mRest.remove_prefix(count);
    return taken;
  }

  std::uint32_t TakeBigEndian() {
    std::uint32_t value = 0;
    for (const char byte : Take(4)) value = value << 8U | static_cast<unsigned char>(byte);
    return value;
  }

  std::string_view mRest;
};

const Property& Find(std::string_view key, const std::vector<Property>& declared) {
  for (const auto& property : declared) {
    if (RuntimeStringCompare(property.Name, key) == 0) return property;
  }
  throw UnsupportedFormatException("the key is not declared: " + String(key));
}

}  // namespace

String EncodePropertyList(const std::vector<PropertyEntry>& entries) {
  std::string bytes;
  for (const auto& [key, value] : entries) {
    bytes.append(key) += ' ';
    std::visit(Encoder{bytes}, value);
  }
  return {std::move(bytes)};
}

void RuntimeMassPropertySetter(EventSource& object, const String& list) {
  const auto& declared = object.ClassOf().Properties();
  std::vector<std::pair<const Property&, PropertyValue>> entries;
  for (Reader reader(list); !reader.AtEnd();) {
    const auto& property = Find(reader.TakeKey(), declared);
    entries.emplace_back(property, std::visit(reader, property.Type));
  }
  for (const auto& [property, value] : entries) property.Set(object, value);
}

}  // namespace zelto
