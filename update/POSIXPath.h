#pragma once

#include "platform/Files.h"

namespace zelto::File {

// The absolute path of the item, in the bytes of the file system; nil for a nil item. An item that
// does not exist has its parent's path, "/" and its name.
String POSIXPath(const Ref<FolderItem>& item);

}  // namespace zelto::File
