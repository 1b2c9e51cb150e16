#include "exec/CommandLines.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

using namespace zelto;

namespace {

// One `sh` process for all runs. `su`, `sudo` and `tar` are functions that print their arguments.
// The process starts no program and therefore parses thousands of command lines per second.
class Interpreter {
 public:
  Interpreter() {
    int input[2];
    int output[2];
    if (pipe(input) != 0 || pipe(output) != 0) std::abort();
    if (fork() == 0) {
      dup2(input[0], 0);
      dup2(output[1], 1);
      for (const int end : {input[0], input[1], output[0], output[1]}) close(end);
      execl("/bin/sh", "sh", nullptr);
      _exit(127);
    }
    close(input[0]);
    close(output[1]);
    mInput = fdopen(input[1], "w");
    mOutput = fdopen(output[0], "r");
    std::fputs(
        "PATH=/nowhere\n"
        "print() { for word; do printf '%s\\037' \"$word\"; done; printf '\\036'; }\n"
        "su() { IFS= read -r line; print su \"$line\"; print \"$@\";"
        " while [ \"$1\" != -c ]; do shift; done; eval \"$2\"; }\n"
        "sudo() { print sudo \"$@\"; }\n"
        "tar() { print tar \"$@\"; }\n",
        mInput);
  }

  Interpreter(const Interpreter&) = delete;
  Interpreter& operator=(const Interpreter&) = delete;
  ~Interpreter() {
    std::fclose(mInput);
    std::fclose(mOutput);
    wait(nullptr);
  }

  std::string Arguments(const CommandLine& line) {
    std::fprintf(mInput, "%s\nprintf '\\035'\n", std::string(line.Text.Bytes()).c_str());
    std::fflush(mInput);
    std::string arguments;
    for (int c; (c = std::fgetc(mOutput)) != '\035' && c != EOF;) arguments += static_cast<char>(c);
    return arguments;
  }

 private:
  std::FILE* mInput;
  std::FILE* mOutput;
};

}  // namespace

// A real `sh` must parse the command line to the original values.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  // Shell refuses the first two characters. The others are separators of this test.
  if (bytes.find_first_of(std::string("\0\n\035\036\037", 5)) != bytes.npos) return 0;
  const auto half = bytes.substr(0, size / 2);
  const auto path = "/" + bytes.substr(size / 2);
  const auto line = FullExtract(half, half, path);
  const bool isDashed = half[0] == '-';
  const auto start = "su\037" + half + "\037\036" + (isDashed ? "-c\037" : half + "\037-c\037");
  const auto end = (isDashed ? "\037--\037-\037" + half : "") +
                   "\037\036sudo\037tar\037-zxPvf\037" + path + "\037\036";
  const auto gives = [&](Interpreter& interpreter) {
    const auto arguments = interpreter.Arguments(line);
    return arguments.starts_with(start) && arguments.ends_with(end);
  };
  // The interpreter fails about once in a million lines, when it cannot fork. A new interpreter
  // then succeeds, unless the command line is wrong.
  static auto interpreter = std::make_unique<Interpreter>();
  if (gives(*interpreter)) return 0;
  interpreter = std::make_unique<Interpreter>();
  if (!gives(*interpreter)) std::abort();
  return 0;
}
