#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zelto {

using Int32 = std::int32_t;

bool RuntimeStringEqual(std::string_view left, std::string_view right);

// An immutable sequence of bytes, UTF-8 where it is text. The empty string is nil. Copies and parts
// share the memory, which is overwritten when the last of them goes, since any string may hold a
// password.
class String {
 public:
  String() = default;
  String(const char* text) : String(std::string_view(text)) {}
  String(std::string_view bytes);
  String(const std::string& bytes) : String(std::string_view(bytes)) {}
  // Keeps the memory that the text has reserved.
  String(std::string&& bytes);

  bool IsNil() const { return !mMemory; }
  std::string_view Bytes() const {
    return mMemory ? std::string_view(mMemory->Bytes).substr(mStart, mSize) : "";
  }
  // The part of this string that the bytes, which lie in it, are.
  String Part(std::string_view bytes) const;

  // The case of ASCII letters does not count.
  friend bool operator==(const String& left, const String& right) {
    return RuntimeStringEqual(left.Bytes(), right.Bytes());
  }
  friend bool operator==(const String& left, const char* right) {
    return RuntimeStringEqual(left.Bytes(), right);
  }

 private:
  friend String operator+(const String& left, String&& right);

  struct Memory {
    Memory() = default;
    Memory(const Memory&) = delete;
    Memory& operator=(const Memory&) = delete;
    ~Memory();

    std::string Bytes;
  };

  std::shared_ptr<Memory> mMemory;  // not changed while it is shared
  std::size_t mStart = 0;
  std::size_t mSize = 0;
};

String operator+(const String& left, const String& right);
// Puts the left text in front of the right one where that has the room and no other holder.
String operator+(const String& left, String&& right);

// 0 when the two are equal; the case of ASCII letters does not count.
Int32 RuntimeStringCompare(const String& left, const String& right);

Int32 LenB(const String& text);                  // bytes
Int32 Len(const String& text);                   // characters
String Right(const String& text, Int32 length);  // the last `length` characters

// The pieces between the delimiters. A nil delimiter gives the whole text as one piece.
std::vector<String> Split(const String& text, const String& delimiter);
// The n-th piece, counted from 1; nil when there is none.
String NthField(const String& text, const String& delimiter, Int32 n);
// The element at the index, counted from 0; nil behind the last one.
String ElementAt(const std::vector<String>& array, Int32 index);

// The platform's line end.
class EndOfLine {
 public:
  operator String() const { return "\n"; }
};

inline String operator+(const EndOfLine& end, const String& text) { return String(end) + text; }
inline String operator+(const String& text, const EndOfLine& end) { return text + String(end); }

}  // namespace zelto
