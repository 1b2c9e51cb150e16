#pragma once

#include <sys/types.h>

#include "exec/CommandLines.h"

namespace zelto {

// Starts `sh` in a new session and returns the process id, or 0 with errno set. `output` and
// `errors` become its standard output and error. `sh` reads the command line from standard input,
// because `ps` shows arguments. The wrapper writes `mark` around the output of each `sudo` command.
pid_t StartInterpreter(const CommandLine& command, const std::string& mark, int output, int errors);

}  // namespace zelto
