#include "exec/OutputFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <string>

namespace zelto {

namespace {

#ifdef __linux__
constexpr const char* ownDescriptors = "/proc/self/fd/";
int NewFile() { return memfd_create("output", MFD_CLOEXEC); }
#else
constexpr const char* ownDescriptors = "/dev/fd/";
int NewFile() {
  std::FILE* file = std::tmpfile();
  const int copy = file ? fcntl(fileno(file), F_DUPFD_CLOEXEC, 0) : -1;
  if (file) std::fclose(file);
  return copy;
}
#endif

}  // namespace

OutputFile::OutputFile() : mReader(NewFile()) {}

// Opens the file anew. The lock belongs to this open file and not to a process, so it lasts until
// the last copy of the descriptor is closed.
Descriptor OutputFile::Writer() const {
  const auto path = ownDescriptors + std::to_string(mReader.Number());
  Descriptor writer(open(path.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC));
  if (writer.IsOpen()) flock(writer.Number(), LOCK_EX);
  return writer;
}

bool OutputFile::IsHeld() const {
  return flock(mReader.Number(), LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

String OutputFile::Content() const {
  struct stat file {};
  fstat(mReader.Number(), &file);
  std::string content(static_cast<std::size_t>(file.st_size), '\0');
  std::size_t got = 0;
  while (got < content.size()) {
    const auto count =
        pread(mReader.Number(), &content[got], content.size() - got, static_cast<off_t>(got));
    if (count == 0 || (count < 0 && errno != EINTR)) break;
    if (count > 0) got += static_cast<std::size_t>(count);
  }
  content.resize(got);
  return {std::move(content)};
}

}  // namespace zelto
