#pragma once

#include <sys/types.h>

#include "exec/CommandLines.h"

namespace zelto {

// Starts `sh` in a session of its own, with the two descriptors as its standard output and error,
// and of this process's environment no more than the path and who the user is. The line is its
// standard input, so that no list of processes shows it. The front end writes the mark before and
// after the output of a command that `sudo` runs. Gives the process, or 0 with the reason in errno.
pid_t StartInterpreter(const CommandLine& command, const std::string& mark, int output, int errors);

// What `sudo` is told to write when it asks for a password.
inline constexpr const char* SudoPrompt = "ZELTO_PASSPHRASE";

}  // namespace zelto
