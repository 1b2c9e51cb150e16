#include "exec/Interpreter.h"

#include <fcntl.h>
#include <paths.h>
#include <spawn.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <string>
#include <vector>

#include "exec/FrontEnd.h"

namespace zelto {

namespace {

using Environment = std::vector<std::string>;

std::string SearchPath() {
  const char* path = std::getenv("PATH");
  const auto frontEnd = FrontEndFolder().string();
  return (frontEnd.empty() ? "" : frontEnd + ":") + (path ? path : _PATH_DEFPATH);
}

// `su -c` starts a new session, in which `sudo` has neither a terminal nor cached credentials. The
// front end passes the password to `sudo`. If PATH does not lead to it, `sudo` runs SUDO_ASKPASS
// with the prompt as the argument: printenv, with the name of the variable that has the password.
// `sudo` does so only if DISPLAY is set.
Environment CommandEnvironment(const std::string& mark) {
  Environment environment{
      "PATH=" + SearchPath(),
      "LC_ALL=C.UTF-8",
      "DISPLAY=none",
      "SUDO_ASKPASS=/usr/bin/printenv",
      std::string("SUDO_PROMPT=") + SudoPrompt,
      "ZELTO_MARK=" + mark,
  };
  for (const std::string name : {"HOME", "USER", "LOGNAME"}) {
    if (const char* value = std::getenv(name.c_str())) environment.push_back(name + "=" + value);
  }
  return environment;
}

std::vector<char*> Pointers(Environment& environment) {
  std::vector<char*> pointers;
  for (auto& entry : environment) pointers.push_back(entry.data());
  pointers.push_back(nullptr);
  return pointers;
}

// The script exports the password. In the environment with which `sh` starts, the password would
// stay readable in /proc while the command runs.
String Script(const CommandLine& command) {
  String line = command.Text + "\n";
  if (command.Passphrase.IsNil()) return line;
  return String("export ") + SudoPrompt + "=" + Quoted(command.Passphrase) + "\n" + line;
}

// Stops without an error if the reader closes the pipe.
void WriteAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const auto written = write(descriptor, bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) return;
    if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

// Starts `sh` in a new session, with the default action for every signal and none blocked. Returns
// the process id, or 0 with errno set.
pid_t Spawn(int input, int output, int errors, Environment environment) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, errors, STDERR_FILENO);
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setflags(&attributes,
                           POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
  sigset_t signals;
  sigemptyset(&signals);
  posix_spawnattr_setsigmask(&attributes, &signals);
  sigfillset(&signals);
  posix_spawnattr_setsigdefault(&attributes, &signals);
  char name[] = "sh";
  char* const arguments[] = {name, nullptr};
  pid_t process = 0;
  const int reason =
      posix_spawnp(&process, name, &actions, &attributes, arguments, Pointers(environment).data());
  posix_spawn_file_actions_destroy(&actions);
  posix_spawnattr_destroy(&attributes);
  errno = reason;
  return reason == 0 ? process : 0;
}

}  // namespace

pid_t StartInterpreter(const CommandLine& command, const std::string& mark, int output,
                       int errors) {
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) return 0;
  for (const int end : ends) fcntl(end, F_SETFD, FD_CLOEXEC);
  const pid_t process = Spawn(ends[0], output, errors, CommandEnvironment(mark));
  const int reason = errno;
  close(ends[0]);
  if (process != 0) WriteAll(ends[1], Script(command).Bytes());
  close(ends[1]);
  errno = reason;
  return process;
}

}  // namespace zelto
