#pragma once

#include <cstdio>
#include <memory>
#include <string>

namespace zelto {

// An unnamed file that takes the output of commands. Every writer appends. It outlives this process
// as long as a command holds it.
class OutputFile {
 public:
  // Below /tmp or the folder that TMPDIR names, or in memory when neither can be written.
  OutputFile();

  bool IsOpen() const { return mFile != nullptr; }
  int Descriptor() const { return fileno(mFile.get()); }
  std::size_t Size() const;
  // Appends the bytes from `start` to `end` to the text.
  void AppendTo(std::string& text, std::size_t start, std::size_t end) const;

 private:
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> mFile;
};

}  // namespace zelto
