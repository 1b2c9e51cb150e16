#include "exec/CommandLines.h"

#include <stdio.h>

#include <cstdio>
#include <cstdlib>
#include <string>

using namespace zelto;

namespace {

// `su`, `sudo` and `tar` are functions that print their arguments, so the shell starts no program.
const std::string functions =
    "PATH=/nowhere\n"
    "print() { for word; do printf '%s\\037' \"$word\"; done; printf '\\036'; }\n"
    "su() { IFS= read -r line; print su \"$line\"; print \"$@\";"
    " while [ \"$1\" != -c ]; do shift; done; eval \"$2\"; }\n"
    "sudo() { print sudo \"$@\"; }\n"
    "tar() { print tar \"$@\"; }\n";

std::string Printed(const CommandLine& line) {
  std::FILE* output = popen((functions + std::string(line.Text.Bytes())).c_str(), "r");
  if (!output) return {};
  std::string text;
  for (int c; (c = std::fgetc(output)) != EOF;) text += static_cast<char>(c);
  pclose(output);
  return text;
}

}  // namespace

// A real `sh` must parse the command line to the original values.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  // Shell refuses NUL and newline. The other two characters are separators of this test.
  if (bytes.find_first_of(std::string("\0\n\036\037", 4)) != bytes.npos) return 0;
  const auto half = bytes.substr(0, size / 2);
  const auto path = "/" + bytes.substr(size / 2);
  const auto line = FullExtract(half, half, path);
  const bool isDashed = half[0] == '-';
  const auto start = "su\037" + half + "\037\036" + (isDashed ? "-c\037" : half + "\037-c\037");
  const auto end = (isDashed ? "\037--\037-\037" + half : "") +
                   "\037\036sudo\037tar\037-zxPvf\037" + path + "\037\036";
  const auto isCorrect = [&] {
    const auto printed = Printed(line);
    return printed.starts_with(start) && printed.ends_with(end);
  };
  // Tries twice, because `sh` sometimes cannot fork on a busy machine.
  if (!isCorrect() && !isCorrect()) std::abort();
  return 0;
}
