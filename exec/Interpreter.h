#pragma once

#include <sys/types.h>

#include "exec/CommandLines.h"

namespace zelto {

// Starts `sh` in a new session and does not wait for it. `output` and `errors` become its standard
// output and error. `sh` reads the command line from standard input, because `ps` shows arguments.
// The front end writes `mark` before and after the output of each `sudo` command. Returns the
// process id. If `sh` cannot be started, returns 0 and sets errno.
pid_t StartInterpreter(const CommandLine& command, const std::string& mark, int output, int errors);

// The prompt with which `sudo` asks for the password, and the variable in which `sh` exports it.
inline constexpr const char* SudoPrompt = "ZELTO_PASSPHRASE";

}  // namespace zelto
