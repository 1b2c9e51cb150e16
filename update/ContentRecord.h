#pragma once

#include <optional>

#include "platform/runtime/String.h"

namespace zelto {

struct ContentRecord {
  String Product;
  String Version;
  String Description;
};

// The size of the extracted record in bytes. Empty unless the record is a regular file with one
// link and at most 64 KiB. A link could expose any file, because root reads the record.
std::optional<std::size_t> ContentRecordSize();

// Reads the record from the output of a check: line 0 is the path of the extracted member, lines 1
// to 3 are the record. A value starts after the first "=" of its line and ends at a second "=" or
// at the end of the line. It is nil if the line is missing or has no "=".
ContentRecord ReadContentRecord(const String& text);

}  // namespace zelto
