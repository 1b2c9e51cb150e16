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

#include "exec/Wrapper.h"
#include "platform/runtime/Descriptor.h"

namespace zelto {

namespace {

using Environment = std::vector<std::string>;

std::string SearchPath(const std::string& wrapper) {
  const char* path = std::getenv("PATH");
  return (wrapper.empty() ? "" : wrapper + ":") + (path ? path : _PATH_DEFPATH);
}

// `su -c` starts a new session, in which `sudo` has neither a terminal nor cached credentials, so
// that the wrapper must pass the password. PAM can replace PATH. Then the start files in the
// wrapper's folder put the folder first again: bash reads BASH_ENV, and zsh a file in ZDOTDIR.
Environment CommandEnvironment(const std::string& mark) {
  const auto wrapper = WrapperFolder().string();
  Environment environment{
      "PATH=" + SearchPath(wrapper), "BASH_ENV=" + wrapper + "/path",
      "ZDOTDIR=" + wrapper,          "LC_ALL=C.UTF-8",
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
  if (command.Needs != Privilege::Root) return line;
  return "export ZELTO_PASSPHRASE=" + Quoted(command.Password) + "\n" + line;
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
  Descriptor reading(ends[0]);
  const Descriptor writing(ends[1]);
  for (const int end : ends) fcntl(end, F_SETFD, FD_CLOEXEC);
  const pid_t process = Spawn(reading.Number(), output, errors, CommandEnvironment(mark));
  const int reason = errno;
  reading = Descriptor();  // so that a write fails if the process has ended
  if (process != 0) WriteAll(writing.Number(), Script(command).Bytes());
  errno = reason;
  return process;
}

}  // namespace zelto
