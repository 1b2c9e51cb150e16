#pragma once

#include <optional>

#include "platform/runtime/String.h"

namespace zelto {

// The metadata of an update file.
struct ContentRecord {
  String Product;
  String Version;
  String Description;
};

// The size in bytes of the record that lies in the file system; nothing unless it is a regular file
// with no other name and of a size worth showing. A member of the path may just as well be a link
// to a file that is not the update's to show.
std::optional<std::size_t> ContentRecordSize();

// Reads the record from the text that the commands of a check give: line 0 is the member that was
// extracted, lines 1 to 3 are the record's. A value stands between the first and the second "=" of
// its line; a line that is not there or has none gives nil.
ContentRecord ReadContentRecord(const String& text);

}  // namespace zelto
