#include "exec/Wrapper.h"

#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <string_view>
#ifdef __APPLE__
#include <mach-o/dyld.h>
#else
#include <sys/xattr.h>
#endif

namespace zelto {

namespace {

namespace fs = std::filesystem;

// The folder of the running program, or empty if it is unknown.
fs::path ProgramFolder() {
  std::error_code error;
#ifdef __APPLE__
  char path[4096];
  std::uint32_t size = sizeof path;
  if (_NSGetExecutablePath(path, &size) != 0) return {};
  return fs::canonical(path, error).parent_path();
#else
  return fs::read_symlink("/proc/self/exe", error).parent_path();
#endif
}

// A group's list of members does not contain the accounts that have it as their primary group.
bool IsPrimaryGroupOfOthers(gid_t id) {
  bool isFound = false;
  setpwent();
  while (const passwd* user = getpwent()) {
    isFound |= user->pw_gid == id && user->pw_uid != geteuid();
  }
  endpwent();
  return isFound;
}

// True if a group with this number has this name, and no group with this number has another member.
bool HasNoOtherMember(gid_t id, const std::string& name) {
  bool isFound = false;
  bool hasOthers = false;
  setgrent();
  while (const group* entry = getgrent()) {
    if (entry->gr_gid != id) continue;
    isFound |= entry->gr_name == name;
    for (char** member = entry->gr_mem; *member; ++member) hasOthers |= *member != name;
  }
  endgrent();
  return isFound && !hasOthers;
}

// True if the group is the primary one of the effective user and of no other, has the user's name,
// and has no other members.
bool IsPrivateGroup(gid_t id) {
  const passwd* user = getpwuid(geteuid());
  if (!user || user->pw_gid != id) return false;
  return HasNoOtherMember(id, user->pw_name) && !IsPrimaryGroupOfOthers(id);
}

// The group's write permission also stands for that of an access control list.
bool HasAccessControlList([[maybe_unused]] const fs::path& path) {
#ifdef __APPLE__
  return false;
#else
  return getxattr(path.c_str(), "system.posix_acl_access", nullptr, 0) > 0;
#endif
}

bool IsSafe(const fs::path& path, const struct stat& entry) {
  const bool isOwned = entry.st_uid == 0 || entry.st_uid == geteuid();
  const bool isGroupSafe = (entry.st_mode & S_IWGRP) == 0 ||
                           (IsPrivateGroup(entry.st_gid) && !HasAccessControlList(path));
  return isOwned && isGroupSafe && (entry.st_mode & S_IWOTH) == 0;
}

bool IsSafeFile(const fs::path& path) {
  struct stat entry {};
  return lstat(path.c_str(), &entry) == 0 && S_ISREG(entry.st_mode) && IsSafe(path, entry);
}

// In a sticky folder others can add entries, but only the owner of an entry can replace it.
bool IsSafeFolder(const fs::path& path, bool mayOthersAdd) {
  struct stat entry {};
  if (lstat(path.c_str(), &entry) != 0 || !S_ISDIR(entry.st_mode)) return false;
  if (mayOthersAdd && (entry.st_mode & S_ISVTX) != 0) {
    entry.st_mode &= ~static_cast<mode_t>(S_IWGRP | S_IWOTH);
  }
  return IsSafe(path, entry);
}

}  // namespace

bool IsTrustworthy(const fs::path& file) {
  constexpr const char* special = ":$`\\\"";  // PATH splits at the colon, and bash expands BASH_ENV
  const bool isPlain = file.native().find_first_of(special) == std::string::npos;
  if (!file.is_absolute() || !isPlain || !IsSafeFile(file)) return false;
  const auto own = file.parent_path();
  for (auto folder = own;; folder = folder.parent_path()) {
    if (!IsSafeFolder(folder, folder != own)) return false;
    if (folder == folder.root_path()) return true;
  }
}

bool HasCompatibleShell(const std::string& user) {
  constexpr std::string_view compatible[] = {"sh",  "bash",  "dash", "ash",
                                             "ksh", "ksh93", "mksh", "zsh"};
  const passwd* entry = getpwnam(user.c_str());
  if (!entry || *entry->pw_shell == '\0') return true;  // the default is /bin/sh
  const auto name = fs::path(entry->pw_shell).filename().string();
  return std::ranges::find(compatible, name) != std::end(compatible);
}

// In a build, libexec is next to the program's folder. In an installation, ZELTO_LIBEXEC leads to
// it.
fs::path WrapperFolder() {
  const auto program = ProgramFolder();
  for (const fs::path place : {"../libexec", ZELTO_LIBEXEC}) {
    std::error_code error;
    auto folder = fs::canonical(program / place / "zelto-update-utility", error);
    const auto isSafe = [&](const char* file) { return IsTrustworthy(folder / file); };
    if (!error && isSafe("sudo") && isSafe("path") && isSafe(".zshenv")) return folder;
  }
  return {};
}

}  // namespace zelto
