#include "update/POSIXPath.h"

namespace zelto::File {

String POSIXPath(const Ref<FolderItem>& item) {
  if (!item) return {};
  if (item->Exists()) return item->NativePath();
  const auto parent = item->Parent();
  return (parent ? POSIXPath(parent) : String()) + "/" + item->Name();
}

}  // namespace zelto::File
