#pragma once

#include "platform/runtime/String.h"

namespace zelto {

// The metadata of an update file.
struct ContentRecord {
  String Product;
  String Version;
  String Description;
};

// Whether a record of a size worth showing lies there: a regular file with one name. A member
// of the path may just as well be a link to a file that is not the update's to show.
bool IsContentRecordInPlace();

// Reads the record from the text that the commands of a check give: line 0 is the member that was
// extracted, lines 1 to 3 are the record's. A value stands between the first and the second "=" of
// its line; a line that is not there or has none gives nil.
ContentRecord ReadContentRecord(const String& text);

}  // namespace zelto
