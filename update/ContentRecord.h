#pragma once

#include "platform/runtime/String.h"

namespace zelto {

struct ContentRecord {
  String Product;
  String Version;
  String Description;
};

// Reads the record from the output of a check: line 0 is the path of the extracted member, lines 1
// to 3 are the record. A value starts after the first "=" of its line and ends at a second "=" or
// at the end of the line. It is nil if the line is missing or has no "=".
ContentRecord ReadContentRecord(const String& text);

}  // namespace zelto
