#include "exec/OutputFile.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

namespace zelto {

namespace {

int NewFileIn(const char* folder) {
  std::string name = std::string(folder ? folder : "") + "/zelto-XXXXXX";
  const int descriptor = folder ? mkstemp(name.data()) : -1;
  if (descriptor >= 0) unlink(name.c_str());
  return descriptor;
}

int NewFileInMemory() {
#ifdef __linux__
  return memfd_create("output", MFD_CLOEXEC);
#else
  return -1;
#endif
}

// Returns null if no file can be created.
std::FILE* NewFile() {
  if (auto* file = std::tmpfile()) return file;
  int descriptor = NewFileIn(std::getenv("TMPDIR"));
  if (descriptor < 0) descriptor = NewFileInMemory();
  return descriptor < 0 ? nullptr : fdopen(descriptor, "w+");
}

}  // namespace

OutputFile::OutputFile() : mFile(NewFile(), std::fclose) {
  if (!mFile) return;
  fcntl(Descriptor(), F_SETFD, FD_CLOEXEC);
  fcntl(Descriptor(), F_SETFL, fcntl(Descriptor(), F_GETFL) | O_APPEND);
}

std::size_t OutputFile::Size() const {
  const auto size = lseek(Descriptor(), 0, SEEK_END);
  return size < 0 ? 0 : static_cast<std::size_t>(size);
}

void OutputFile::AppendTo(std::string& text, std::size_t start, std::size_t end) const {
  auto got = text.size();
  text.resize(got + (end - start));
  while (got < text.size()) {
    const auto rest = text.size() - got;
    const auto count = pread(Descriptor(), &text[got], rest, static_cast<off_t>(end - rest));
    if (count == 0 || (count < 0 && errno != EINTR)) break;
    if (count > 0) got += static_cast<std::size_t>(count);
  }
  text.resize(got);
}

}  // namespace zelto
