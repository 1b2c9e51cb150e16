#pragma once

#include <filesystem>
#include <string>

namespace zelto {

// The folder of the wrapper for `sudo`, which becomes the first entry in the commands' PATH. Empty
// if there is no trustworthy wrapper.
std::filesystem::path WrapperFolder();

// True if the path is absolute, has no symbolic links and no character that PATH or bash
// interprets, leads to a regular file, and only root and the effective user can change or replace
// the file or add others to its folder.
bool IsTrustworthy(const std::filesystem::path& file);

// True if the user's login shell is known to read quotes as `sh` does, or if there is no such user.
// In another shell, a part of a value could become a command.
bool HasCompatibleShell(const std::string& user);

}  // namespace zelto
