#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zelto {

using Int32 = std::int32_t;

// An immutable sequence of bytes, normally UTF-8. The empty string is nil. Copies share the bytes.
// The destructor of the last copy overwrites them, because any string can contain a password.
class String {
 public:
  String() = default;
  String(const char* text) : String(std::string_view(text)) {}
  String(std::string_view bytes) : String(std::string(bytes)) {}
  String(const std::string& bytes) : String(std::string_view(bytes)) {}
  // Leaves no copy in `bytes`.
  String(std::string&& bytes);

  bool IsNil() const { return !mBytes; }
  std::string_view Bytes() const { return mBytes ? std::string_view(*mBytes) : ""; }

  // Compares the exact bytes, unlike RuntimeStringCompare.
  friend bool operator==(const String& left, const String& right) {
    return left.Bytes() == right.Bytes();
  }

 private:
  std::shared_ptr<const std::string> mBytes;
};

String operator+(const String& left, const String& right);

// Ignores the case of ASCII letters. 0 if equal, negative if `left` sorts before `right`.
Int32 RuntimeStringCompare(std::string_view left, std::string_view right);
inline Int32 RuntimeStringCompare(const String& left, const String& right) {
  return RuntimeStringCompare(left.Bytes(), right.Bytes());
}

Int32 LenB(const String& text);                  // bytes
Int32 Len(const String& text);                   // characters
String Right(const String& text, Int32 length);  // the last `length` characters

// The pieces between the delimiters. With a nil delimiter, the whole text as one piece.
std::vector<String> Split(const String& text, const String& delimiter);
// The n-th piece, counted from 1, or nil if there is none.
String NthField(const String& text, const String& delimiter, Int32 n);
// The element at the index, counted from 0, or nil if there is none.
String ElementAt(const std::vector<String>& array, Int32 index);

// The platform's newline.
class EndOfLine {
 public:
  operator String() const { return "\n"; }

  friend bool operator==(const EndOfLine& end, const String& text) { return String(end) == text; }
  friend auto operator<=>(const EndOfLine& end, const String& text) {
    return RuntimeStringCompare(end, text) <=> 0;
  }
};

inline String operator+(const EndOfLine& end, const String& text) { return String(end) + text; }
inline String operator+(const String& text, const EndOfLine& end) { return text + String(end); }

}  // namespace zelto
