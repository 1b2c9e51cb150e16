#pragma once

#include <sys/types.h>

#include "exec/CommandLines.h"

namespace zelto {

// Starts `sh` in a new session and returns the process id, or 0 with errno set. `output` and
// `errors` become its standard output and error. `sh` reads the command line from standard input,
// because `ps` shows arguments. The front end writes `mark` around the output of each `sudo`
// command.
pid_t StartInterpreter(const CommandLine& command, const std::string& mark, int output, int errors);

// The prompt with which `sudo` asks for the password, and the variable in which `sh` exports it.
inline constexpr const char* SudoPrompt = "ZELTO_PASSPHRASE";

}  // namespace zelto
