#pragma once

#include "platform/Files.h"

namespace zelto::File {

// The absolute path of the item in the bytes of the file system. Nil for a nil item. The path of an
// item that does not exist is its parent's path, "/" and its name.
String POSIXPath(const Ref<FolderItem>& item);

}  // namespace zelto::File
