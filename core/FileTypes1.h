#pragma once

#include "platform/Files.h"

namespace zelto::FileTypes1 {

// What an update file is to open dialogs and drop targets. Nil before Initialize.
const Ref<FileType>& gzipTarFile();
void Initialize();
void Finalize();

}  // namespace zelto::FileTypes1
