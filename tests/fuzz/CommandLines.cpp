#include "exec/CommandLines.h"

#include <cstdio>
#include <cstdlib>
#include <string>

using namespace zelto;

namespace {

// The arguments that `su`, `sudo` and `tar` get from the line. They are functions of a real `sh`
// and print their arguments, so it starts no program.
std::string Arguments(const CommandLine& line) {
  setenv("LINE", std::string(line.Text.Bytes()).c_str(), 1);
  std::FILE* output = popen(
      "PATH=/nowhere\n"
      "print() { for word; do printf '%s\\037' \"$word\"; done; printf '\\036'; }\n"
      "su() { IFS= read -r line; print su \"$line\"; print \"$@\";"
      " while [ \"$1\" != -c ]; do shift; done; eval \"$2\"; }\n"
      "sudo() { print sudo \"$@\"; }\n"
      "eval \"$LINE\"",
      "r");
  if (!output) std::abort();
  std::string arguments;
  for (int c; (c = std::fgetc(output)) != EOF;) arguments += static_cast<char>(c);
  pclose(output);
  return arguments;
}

}  // namespace

// A real `sh` must parse the command line to the original values.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  // The shell refuses the first two. The others are separators of this test.
  if (bytes.find_first_of(std::string("\0\n\036\037", 4)) != bytes.npos) return 0;
  const auto half = bytes.substr(0, size / 2);
  const auto path = "/" + bytes.substr(size / 2);
  const auto line = FullExtract(half, half, path);
  const bool isDashed = half[0] == '-';
  const auto start = "su\037" + half + "\037\036" + (isDashed ? "-c\037" : half + "\037-c\037");
  const auto end = (isDashed ? "\037--\037-\037" + half : "") +
                   "\037\036sudo\037tar\037-zxPvf\037" + path + "\037\036";
  const auto arguments = Arguments(line);
  if (!arguments.starts_with(start) || !arguments.ends_with(end)) std::abort();
  return 0;
}
