#include "exec/OutputFile.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>

namespace zelto {

namespace {

std::FILE* NewFile() {
#ifdef __linux__
  const int descriptor = memfd_create("output", MFD_CLOEXEC);
  if (descriptor >= 0) return fdopen(descriptor, "w+");
#endif
  return std::tmpfile();
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
