#pragma once

#include "platform/Files.h"

namespace zelto::File {

// The absolute path of the item, in the bytes of the file system. Nil for a nil item. The path of a
// missing item is the path of its parent, "/" and its name.
String POSIXPath(const Ref<FolderItem>& item);

}  // namespace zelto::File
