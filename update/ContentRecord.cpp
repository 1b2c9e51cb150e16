#include "update/ContentRecord.h"

namespace zelto {

namespace {

String WithoutCarriageReturn(const String& line) {
  const auto bytes = line.Bytes();
  return bytes.ends_with('\r') ? String(bytes.substr(0, bytes.size() - 1)) : line;
}

}  // namespace

ContentRecord ReadContentRecord(const String& text) {
  const auto lines = Split(text, EndOfLine());
  const auto value = [&](Int32 line) {
    return NthField(WithoutCarriageReturn(ElementAt(lines, line)), "=", 2);
  };
  return {value(1), value(2), value(3)};
}

}  // namespace zelto
