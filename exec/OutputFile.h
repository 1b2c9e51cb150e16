#pragma once

#include <cstdio>
#include <memory>
#include <string>

namespace zelto {

// An unnamed file for the output of commands, in memory where the system supports it. All writers
// append. A running command keeps the file alive after this process has ended.
class OutputFile {
 public:
  OutputFile();

  bool IsOpen() const { return mFile != nullptr; }
  int Descriptor() const { return fileno(mFile.get()); }
  std::size_t Size() const;
  // Appends the bytes at the offsets from `start` up to, but not including, `end` to `text`.
  void AppendTo(std::string& text, std::size_t start, std::size_t end) const;

 private:
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> mFile;
};

}  // namespace zelto
