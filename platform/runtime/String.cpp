#include "platform/runtime/String.h"

#include <algorithm>

#include "platform/runtime/Secrecy.h"

namespace zelto {

namespace {

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

bool AreSame(char a, char b) { return Folded(a) == Folded(b); }

}  // namespace

String::Memory::~Memory() { Wipe(Bytes.data(), Bytes.size()); }

String::String(std::string_view bytes) {
  if (bytes.empty()) return;
  mMemory = std::make_shared<Memory>();
  mMemory->Bytes = bytes;
  mSize = bytes.size();
}

String::String(std::string&& bytes) {
  if (bytes.empty()) return;
  mMemory = std::make_shared<Memory>();
  mMemory->Bytes.swap(bytes);
  mSize = mMemory->Bytes.size();
  // A short text lay in the other string itself, and still does.
  bytes.resize(bytes.capacity());
  Wipe(bytes.data(), bytes.size());
}

String String::Part(std::string_view bytes) const {
  String part;
  if (bytes.empty()) return part;
  part.mMemory = mMemory;
  part.mStart = static_cast<std::size_t>(bytes.data() - mMemory->Bytes.data());
  part.mSize = bytes.size();
  return part;
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
  const auto& memory = right.mMemory;
  const auto size = left.mSize + right.mSize;
  const bool hasRoom = memory.use_count() == 1 && memory->Bytes.size() == right.mSize &&
                       memory->Bytes.capacity() >= size;
  if (!hasRoom) return left + static_cast<const String&>(right);
  memory->Bytes.insert(0, left.Bytes());
  right.mSize = size;
  return std::move(right);
}

Int32 RuntimeStringCompare(const String& left, const String& right) {
  const auto a = left.Bytes();
  const auto b = right.Bytes();
  const auto [inA, inB] = std::mismatch(a.begin(), a.end(), b.begin(), b.end(), AreSame);
  if (inA == a.end() && inB == b.end()) return 0;
  if (inA == a.end()) return -1;
  if (inB == b.end()) return 1;
  return static_cast<unsigned char>(Folded(*inA)) < static_cast<unsigned char>(Folded(*inB)) ? -1
                                                                                             : 1;
}

bool RuntimeStringEqual(std::string_view left, std::string_view right) {
  return left.size() == right.size() &&
         (left == right || std::equal(left.begin(), left.end(), right.begin(), AreSame));
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
  return text.Part(bytes.substr(start));
}

std::vector<String> Split(const String& text, const String& delimiter) {
  if (delimiter.IsNil()) return {text};
  std::vector<String> pieces;
  auto rest = text.Bytes();
  for (auto at = rest.find(delimiter.Bytes()); at != std::string_view::npos;
       at = rest.find(delimiter.Bytes())) {
    pieces.push_back(text.Part(rest.substr(0, at)));
    rest.remove_prefix(at + delimiter.Bytes().size());
  }
  pieces.push_back(text.Part(rest));
  return pieces;
}

String NthField(const String& text, const String& delimiter, Int32 n) {
  if (n < 1) return {};
  if (delimiter.IsNil()) return n == 1 ? text : String();
  return text.Part(NthPiece(text.Bytes(), delimiter.Bytes(), n));
}

String ElementAt(const std::vector<String>& array, Int32 index) {
  const auto at = static_cast<std::size_t>(index);
  return at < array.size() ? array[at] : String();
}

}  // namespace zelto
