#include "exec/Shell.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "exec/Interpreter.h"
#include "platform/runtime/Plugins.h"
#include "platform/runtime/Wait.h"

namespace zelto {

namespace {

constexpr int notStarted = 127;

// An unlinked file to which every writer appends, or null.
std::FILE* OutputFile() {
  std::FILE* file = std::tmpfile();
  if (file) {
    fcntl(fileno(file), F_SETFD, FD_CLOEXEC);
    fcntl(fileno(file), F_SETFL, fcntl(fileno(file), F_GETFL) | O_APPEND);
  }
  return file;
}

std::size_t SizeOf(std::FILE* file) {
  const auto size = lseek(fileno(file), 0, SEEK_END);
  return size < 0 ? 0 : static_cast<std::size_t>(size);
}

// Appends what the file holds to the text, which has room for it.
void AppendContents(std::string& text, std::FILE* file) {
  const auto start = text.size();
  auto got = start;
  text.resize(start + SizeOf(file));
  while (got < text.size()) {
    const auto count =
        pread(fileno(file), &text[got], text.size() - got, static_cast<off_t>(got - start));
    if (count == 0 || (count < 0 && errno != EINTR)) break;
    if (count > 0) got += static_cast<std::size_t>(count);
  }
  text.resize(got);
}

void EraseAll(std::string& text, std::size_t from, std::string_view part) {
  for (auto at = text.find(part, from); at != std::string::npos; at = text.find(part, at)) {
    text.erase(at, part.size());
  }
}

void EndLine(std::string& text) {
  if (!text.empty() && text.back() != '\n') text += '\n';
}

// A descriptor that becomes readable when the process ends, or -1.
int EndDescriptor([[maybe_unused]] pid_t process) {
#ifdef SYS_pidfd_open
  return static_cast<int>(syscall(SYS_pidfd_open, process, 0));
#else
  return -1;
#endif
}

}  // namespace

struct ShellPlugin {
  static void Init(Shell& shell) {
    shell.mOutput.reset(OutputFile());
    shell.mErrors.reset(OutputFile());
  }

  static void Exit(Shell& shell) {
    shell.ReleaseProcess();
    shell.mOutput.reset();
    shell.mErrors.reset();
  }

  static void Execute(Shell& shell, const CommandLine& command) {
    shell.mQueue.push_back(command);
    if (!shell.IsRunning() || shell.mMode != 0) return;
    do RuntimeAwait(shell.mEnd, shell.mEnd < 0 ? 5 : -1);
    while (shell.IsRunning());
  }

  static String ReadAll(Shell& shell) { return shell.Gathered(); }

  static void SetMode(Shell& shell, Int32 mode) { shell.mMode = mode; }
};

void PublishShell() {
  RuntimePublishPluginEntrypoints({
      {"Shell.__init", ShellPlugin::Init},
      {"Shell.__exit", ShellPlugin::Exit},
      {"Shell.Execute(command as String)", ShellPlugin::Execute},
      {"Shell.ReadAll() as String", ShellPlugin::ReadAll},
      {"Shell.Mode.Set", ShellPlugin::SetMode},
  });
}

Shell::Shell() : mOutput(nullptr, std::fclose), mErrors(nullptr, std::fclose) {
  Glink<void(Shell&)>(PluginSlotOf("Shell.__init"), *this);
}

Shell::~Shell() { Glink<void(Shell&)>(PluginSlotOf("Shell.__exit"), *this); }

void Shell::Mode(Int32 mode) {
  Glink<void(Shell&, Int32)>(PluginSlotOf("Shell.Mode.Set"), *this, mode);
}

void Shell::Execute(const CommandLine& command) {
  Glink<void(Shell&, const CommandLine&)>(PluginSlotOf("Shell.Execute(command as String)"), *this,
                                          command);
}

String Shell::ReadAll() {
  return Glink<String(Shell&)>(PluginSlotOf("Shell.ReadAll() as String"), *this);
}

bool Shell::IsRunning() {
  while (ReapChild() && !mQueue.empty()) {
    const CommandLine next = mQueue.front();
    mQueue.pop_front();
    Start(next);
  }
  return mProcess != 0;
}

void Shell::Start(const CommandLine& command) {
  if (command.Text.Bytes().find_first_of(std::string_view("\0\n", 2)) != std::string_view::npos) {
    return Refuse("A line end or a NUL cannot be part of a command.");
  }
  if (!mOutput || !mErrors) return Refuse("No temporary file can be made.");
  mErrorStarts.insert(mErrorStarts.begin(), SizeOf(mErrors.get()));
  mProcess = StartInterpreter(command, fileno(mOutput.get()), fileno(mErrors.get()));
  if (mProcess == 0) return Refuse(std::strerror(errno));
  mEnd = EndDescriptor(mProcess);
  if (mEnd >= 0) RuntimeWakeOn(mEnd);
}

void Shell::Refuse(const char* reason) {
  mErrorCode = notStarted;
  mRefusals += std::string("The command could not be started: ") + reason + "\n";
}

// Also true when none has been started.
bool Shell::ReapChild() {
  if (mProcess == 0) return true;
  int status = 0;
  const pid_t ended = waitpid(mProcess, &status, WNOHANG);
  if (ended == 0 || (ended < 0 && errno == EINTR)) return false;
  mErrorCode = ended > 0 && WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  ReleaseProcess();
  return true;
}

// The process, which has ended or goes on by itself.
void Shell::ReleaseProcess() {
  mProcess = 0;
  if (mEnd < 0) return;
  RuntimeWakeOff(mEnd);
  close(std::exchange(mEnd, -1));
}

// In one buffer of the right size, since the text may be large.
String Shell::Gathered() {
  constexpr std::size_t slack = 8192;  // for the words that are put in front of the text
  std::string text;
  if (mOutput && mErrors) {
    text.reserve(SizeOf(mOutput.get()) + SizeOf(mErrors.get()) + mRefusals.size() + 2 + slack);
    AppendContents(text, mOutput.get());
    EndLine(text);
    const auto start = text.size();
    AppendContents(text, mErrors.get());
    RemoveQuestions(text, start);
    EndLine(text);
  }
  text += mRefusals;
  return {std::move(text)};
}

// `su` asks as PAM does, before anything else is written; `sudo` asks with our own words.
void Shell::RemoveQuestions(std::string& text, std::size_t errors) const {
  constexpr std::string_view suPrompt = "Password: ";
  for (const auto start : mErrorStarts) {
    const auto at = errors + start;
    if (std::string_view(text).substr(std::min(at, text.size())).starts_with(suPrompt))
      text.erase(at, suPrompt.size());
  }
  EraseAll(text, errors, SudoPrompt);
}

}  // namespace zelto
