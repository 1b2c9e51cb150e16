#include "update/POSIXPath.h"

namespace zelto::File {

String POSIXPath(const Ref<FolderItem>& item) {
  if (!item) return {};
  if (item->Exists()) return item->NativePath();
  const auto parent = POSIXPath(item->Parent());
  return (parent == "/" ? String() : parent) + "/" + item->Name();
}

}  // namespace zelto::File
