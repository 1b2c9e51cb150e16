#include "exec/FrontEnd.h"

#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>
#ifdef __APPLE__
#include <mach-o/dyld.h>
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

bool HasSafeOwner(const struct stat& entry) {
  return entry.st_uid == 0 || entry.st_uid == geteuid();
}

bool IsWritableByOthers(const struct stat& entry) {
  return (entry.st_mode & (S_IWGRP | S_IWOTH)) != 0;
}

bool Permits(const struct stat& entry, mode_t mode) { return (entry.st_mode & mode) == mode; }

bool IsSafeFile(const fs::path& path) {
  struct stat file {};
  struct statvfs mount {};
  return lstat(path.c_str(), &file) == 0 && statvfs(path.c_str(), &mount) == 0 &&
         S_ISREG(file.st_mode) && HasSafeOwner(file) && !IsWritableByOthers(file) &&
         Permits(file, 0555) && (mount.f_flag & ST_NOEXEC) == 0;
}

// In a sticky folder only the owner of an entry can replace it.
bool IsSafeFolder(const fs::path& path) {
  struct stat folder {};
  return lstat(path.c_str(), &folder) == 0 && S_ISDIR(folder.st_mode) && HasSafeOwner(folder) &&
         (!IsWritableByOthers(folder) || Permits(folder, S_ISVTX)) && Permits(folder, 0111);
}

}  // namespace

bool IsSafeForAll(const fs::path& file) {
  if (!file.is_absolute() || !IsSafeFile(file)) return false;
  for (auto folder = file.parent_path();; folder = folder.parent_path()) {
    if (!IsSafeFolder(folder)) return false;
    if (folder == folder.root_path()) return true;
  }
}

// In a build, libexec is next to the program's folder. In an installation, ZELTO_LIBEXEC leads to
// it.
fs::path FrontEndFolder() {
  const auto program = ProgramFolder();
  for (const fs::path place : {"../libexec", ZELTO_LIBEXEC}) {
    std::error_code error;
    const auto file = fs::canonical(program / place / "zelto-update-utility/sudo", error);
    if (!error && IsSafeForAll(file)) return file.parent_path();
  }
  return {};
}

}  // namespace zelto
