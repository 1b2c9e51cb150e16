#pragma once

#include <filesystem>

namespace zelto {

// The folder of the wrapper for `sudo`, which becomes the first entry in the commands' PATH. Empty
// if there is no wrapper or if other users can change it.
std::filesystem::path WrapperFolder();

// True unless the path is absolute, without symbolic links, leads to a regular file, and only root
// and the effective user can change or replace the file.
bool CanOthersChange(const std::filesystem::path& file);

}  // namespace zelto
