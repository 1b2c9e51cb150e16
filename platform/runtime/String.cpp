#include "platform/runtime/String.h"

#include <algorithm>

#include "platform/runtime/Secrecy.h"

namespace zelto {

namespace {

unsigned char LowerCase(char c) {
  return static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
}

bool StartsCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; }

void WipeAndDelete(std::string* bytes) {
  Wipe(bytes->data(), bytes->size());
  delete bytes;
}

}  // namespace

String::String(std::string&& bytes) {
  if (bytes.empty()) return;
  const std::shared_ptr<std::string> taken(new std::string, WipeAndDelete);
  taken->swap(bytes);
  mBytes = taken;
  // The swap leaves a copy of a short string in the buffer of `bytes`.
  bytes.resize(bytes.capacity());
  Wipe(bytes.data(), bytes.size());
}

String operator+(const String& left, const String& right) {
  if (left.IsNil()) return right;
  if (right.IsNil()) return left;
  std::string joined;
  joined.reserve(left.Bytes().size() + right.Bytes().size());
  joined.append(left.Bytes()).append(right.Bytes());
  return {std::move(joined)};
}

Int32 RuntimeStringCompare(std::string_view left, std::string_view right) {
  const auto order = std::lexicographical_compare_three_way(
      left.begin(), left.end(), right.begin(), right.end(),
      [](char a, char b) { return LowerCase(a) <=> LowerCase(b); });
  if (std::is_eq(order)) return 0;
  return std::is_lt(order) ? -1 : 1;
}

Int32 LenB(const String& text) { return static_cast<Int32>(text.Bytes().size()); }

Int32 Len(const String& text) {
  const auto bytes = text.Bytes();
  return static_cast<Int32>(std::count_if(bytes.begin(), bytes.end(), StartsCharacter));
}

String Right(const String& text, Int32 length) {
  const auto bytes = text.Bytes();
  auto start = bytes.size();
  while (length > 0 && start > 0) {
    --start;
    if (StartsCharacter(bytes[start])) --length;
  }
  return bytes.substr(start);
}

std::vector<String> Split(const String& text, const String& delimiter) {
  if (delimiter.IsNil()) return {text};
  std::vector<String> pieces;
  auto rest = text.Bytes();
  for (auto at = rest.find(delimiter.Bytes()); at != std::string_view::npos;
       at = rest.find(delimiter.Bytes())) {
    pieces.emplace_back(rest.substr(0, at));
    rest.remove_prefix(at + delimiter.Bytes().size());
  }
  pieces.emplace_back(rest);
  return pieces;
}

String NthField(const String& text, const String& delimiter, Int32 n) {
  return ElementAt(Split(text, delimiter), n - 1);
}

String ElementAt(const std::vector<String>& array, Int32 index) {
  const auto at = static_cast<std::size_t>(index);
  return at < array.size() ? array[at] : String();
}

}  // namespace zelto
