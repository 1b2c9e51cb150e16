#include "update/ContentRecord.h"

#include <sys/stat.h>

#include "exec/CommandLines.h"

namespace zelto {

namespace {

String WithoutCarriageReturn(const String& line) {
  const auto bytes = line.Bytes();
  return bytes.ends_with('\r') ? String(bytes.substr(0, bytes.size() - 1)) : line;
}

}  // namespace

std::optional<std::size_t> ContentRecordSize() {
  constexpr off_t largest = 65'536;  // bytes, the limit of the front end
  struct stat record {};
  if (lstat(ContentRecordPath, &record) != 0 || !S_ISREG(record.st_mode) || record.st_nlink != 1 ||
      record.st_size > largest) {
    return std::nullopt;
  }
  return static_cast<std::size_t>(record.st_size);
}

ContentRecord ReadContentRecord(const String& text) {
  const auto lines = Split(text, EndOfLine());
  const auto value = [&](Int32 line) {
    return NthField(WithoutCarriageReturn(ElementAt(lines, line)), "=", 2);
  };
  return {value(1), value(2), value(3)};
}

}  // namespace zelto
