#pragma once

#include <filesystem>

namespace zelto {

// The folder of the `sudo` front end that comes with the program, for the start of the commands'
// PATH; empty when IsSafeForAll rejects it.
std::filesystem::path FrontEndFolder();

// True when every account can execute the regular file, and nobody but root and this process's user
// can change or replace it. The path is absolute and has no symbolic link in it.
bool IsSafeForAll(const std::filesystem::path& file);

}  // namespace zelto
