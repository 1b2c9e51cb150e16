#include "platform/runtime/String.h"

#include <algorithm>

#include "platform/runtime/Secrecy.h"

namespace zelto {

namespace {

void WipeAndDelete(std::string* bytes) {
  Wipe(bytes->data(), bytes->size());
  delete bytes;
}

char Folded(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool StartsCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; }

std::string_view NthPiece(std::string_view text, std::string_view delimiter, Int32 n) {
  for (; n > 1; --n) {
    const auto at = text.find(delimiter);
    if (at == std::string_view::npos) return {};
    text.remove_prefix(at + delimiter.size());
  }
  return text.substr(0, text.find(delimiter));
}

}  // namespace

String::String(std::string_view bytes) : String(std::string(bytes)) {}

String::String(std::string&& bytes) {
  if (bytes.empty()) return;
  auto* kept = new std::string;
  kept->swap(bytes);
  mBytes = std::shared_ptr<std::string>(kept, WipeAndDelete);
  // A short text lay in the other string itself, and still does.
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

String operator+(const String& left, String&& right) {
  const auto size = left.Bytes().size() + right.Bytes().size();
  const bool hasRoom = right.mBytes.use_count() == 1 && right.mBytes->capacity() >= size;
  if (!hasRoom) return left + static_cast<const String&>(right);
  right.mBytes->insert(0, left.Bytes());
  return std::move(right);
}

Int32 RuntimeStringCompare(const String& left, const String& right) {
  const auto a = left.Bytes();
  const auto b = right.Bytes();
  const auto [inA, inB] = std::mismatch(a.begin(), a.end(), b.begin(), b.end(),
                                        [](char x, char y) { return Folded(x) == Folded(y); });
  if (inA == a.end() && inB == b.end()) return 0;
  if (inA == a.end()) return -1;
  if (inB == b.end()) return 1;
  return static_cast<unsigned char>(Folded(*inA)) < static_cast<unsigned char>(Folded(*inB)) ? -1
                                                                                             : 1;
}

Int32 LenB(const String& text) { return static_cast<Int32>(text.Bytes().size()); }

Int32 Len(const String& text) {
  const auto bytes = text.Bytes();
  return static_cast<Int32>(std::count_if(bytes.begin(), bytes.end(), StartsCharacter));
}

String Right(const String& text, Int32 length) {
  const auto bytes = text.Bytes();
  auto start = bytes.size();
  for (; length > 0 && start > 0; --length) {
    do --start;
    while (start > 0 && !StartsCharacter(bytes[start]));
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
  if (n < 1) return {};
  if (delimiter.IsNil()) return n == 1 ? text : String();
  return NthPiece(text.Bytes(), delimiter.Bytes(), n);
}

String ElementAt(const std::vector<String>& array, Int32 index) {
  const auto at = static_cast<std::size_t>(index);
  return at < array.size() ? array[at] : String();
}

}  // namespace zelto
