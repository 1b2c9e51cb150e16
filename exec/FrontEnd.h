#pragma once

#include <filesystem>

namespace zelto {

// The folder of the `sudo` front end, which becomes the first entry in the commands' PATH. Returns
// an empty path if the front end is missing or IsSafeForAll rejects it.
std::filesystem::path FrontEndFolder();

// True if the file is regular, every account can execute it, and only root and the effective user
// can change or replace it. False if the path is relative or contains a symbolic link.
bool IsSafeForAll(const std::filesystem::path& file);

}  // namespace zelto
