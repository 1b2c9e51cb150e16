#pragma once

#include "platform/Files.h"

namespace zelto::File {

// The absolute path of the item, in the encoding of the file system. Nil for a nil item. If the
// item does not exist, its path consists of the path of the parent folder, "/" and the name of the
// item.
String POSIXPath(const Ref<FolderItem>& item);

}  // namespace zelto::File
