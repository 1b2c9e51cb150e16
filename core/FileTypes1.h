#pragma once

#include "platform/Files.h"

namespace zelto::FileTypes1 {

// The type of update files in open dialogs and drop targets. Nil before Initialize.
const Ref<FileType>& gzipTarFile();
void Initialize();
void Finalize();

}  // namespace zelto::FileTypes1
