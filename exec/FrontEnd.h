#pragma once

#include <filesystem>

namespace zelto {

// The folder of the `sudo` front end, the first entry of the commands' PATH. Empty if the front end
// is missing or IsSafeForAll rejects it.
std::filesystem::path FrontEndFolder();

// True if every account can execute the regular file and only root and the effective user can
// change or replace it. The path must be absolute and free of symbolic links.
bool IsSafeForAll(const std::filesystem::path& file);

}  // namespace zelto
