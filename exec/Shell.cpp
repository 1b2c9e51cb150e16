#include "exec/Shell.h"

#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <random>

#include "exec/CommandOutput.h"
#include "exec/Interpreter.h"
#include "exec/Wrapper.h"
#include "platform/runtime/Plugins.h"
#include "platform/runtime/Wait.h"

namespace zelto {

namespace {

constexpr Int32 notExecutable = 126;
constexpr Int32 notStarted = 127;

std::string NewMark() {
  std::random_device random;
  std::string mark;
  for (int i = 0; i < 4; ++i) mark += std::to_string(random()) + ".";
  return mark;
}

// Returns a pidfd, which becomes readable when the process ends.
Descriptor EndDescriptor([[maybe_unused]] pid_t process) {
#ifdef SYS_pidfd_open
  return Descriptor(static_cast<int>(syscall(SYS_pidfd_open, process, 0)));
#else
  return Descriptor();
#endif
}

// Reason and remedy.
constexpr const char* noWrapper =
    "it is missing, or other users can change it. Install the package.";
constexpr const char* notFound =
    "its login shell does not find it. Install the package, or use an account whose login shell is "
    "bash or zsh.";
constexpr const char* otherShell =
    "its login shell reads commands in another way than sh. Use an account whose login shell is "
    "bash or zsh.";

}  // namespace

void PublishShell() {
  RuntimePublishPluginEntrypoints({
      {"Shell.__init", +[](Shell& shell) { shell.mMark = NewMark(); }},
      {"Shell.__exit", +[](Shell& shell) { shell.ReleaseProcess(); }},
      {"Shell.Execute(command as String)",
       +[](Shell& shell, const CommandLine& command) {
         shell.mQueue.push_back(command);
         shell.Advance();
         if (shell.mMode == 0) shell.Wait();
       }},
      {"Shell.ReadAll() as String", +[](Shell& shell) { return shell.Gathered(); }},
      {"Shell.Poll", +[](Shell& shell) { shell.Advance(); }},
      {"Shell.Mode.Set", +[](Shell& shell, Int32 mode) { shell.mMode = mode; }},
  });
}

Shell::Shell() { Glink<void(Shell&)>(PluginSlotOf("Shell.__init"), *this); }

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

void Shell::Poll() { Glink<void(Shell&)>(PluginSlotOf("Shell.Poll"), *this); }

String Shell::RecordIdentity() const {
  return mRuns.empty() ? String() : Note(mRuns.back().Output.Content(), mMark);
}

void Shell::Wait() {
  constexpr int pause = 10;  // milliseconds; no descriptor reports that the output is closed
  while (IsRunning()) {
    RuntimeAwait(mEnd.Number(), mEnd.IsOpen() ? -1 : pause);
    RuntimeBackgroundTask();
    Advance();
  }
}

void Shell::Advance() {
  while (!(mIsRunning = !HasEnded()) && !mQueue.empty()) {
    const CommandLine next = mQueue.front();
    mQueue.pop_front();
    Start(next);
  }
}

void Shell::Start(const CommandLine& command) {
  mRuns.push_back({command.Password, command.Needs == Privilege::Check});
  if (command.Text.Bytes().find_first_of(std::string_view("\0\n", 2)) != std::string_view::npos) {
    return NotStarted("A newline or a NUL cannot be part of a command.");
  }
  if (command.Needs != Privilege::None) {
    if (WrapperFolder().empty()) return RefuseAccount(noWrapper);
    if (!HasCompatibleShell(std::string(command.User.Bytes()))) return RefuseAccount(otherShell);
  }
  const auto output = mRuns.back().Output.Writer();
  const auto errors = mRuns.back().Errors.Writer();
  if (!output.IsOpen() || !errors.IsOpen()) {
    return NotStarted("No file for the output can be made.");
  }
  mProcess = StartInterpreter(command, mMark, output.Number(), errors.Number());
  if (mProcess == 0) return NotStarted(std::strerror(errno));
  mEnd = EndDescriptor(mProcess);
  if (mEnd.IsOpen()) RuntimeWakeOn(mEnd.Number());
}

void Shell::NotStarted(const char* reason) {
  Refuse(notStarted, std::string("The command could not be started: ") + reason);
}

void Shell::RefuseAccount(const char* reason) {
  Refuse(notExecutable,
         std::string("The account cannot use the utility's wrapper for sudo: ") + reason);
}

void Shell::Refuse(Int32 status, const std::string& reason) {
  mErrorCode = status;
  mRefusals += reason + "\n";
}

bool Shell::HasEnded() {
  if (mProcess != 0) ReapChild();
  return mProcess == 0 && (mRuns.empty() || !mRuns.back().IsHeld());
}

void Shell::ReapChild() {
  int status = 0;
  const pid_t ended = waitpid(mProcess, &status, WNOHANG);
  if (ended == 0 || (ended < 0 && errno == EINTR)) return;
  ReleaseProcess();
  mErrorCode = ended > 0 && WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  auto& run = mRuns.back();
  run.HasPassed = mErrorCode == 0 && run.IsCheck;
  if (run.HasPassed && !HasMark(run.Output.Content().Bytes(), mMark)) {
    RefuseAccount(notFound);
  }
}

// Forgets the process and does not end it.
void Shell::ReleaseProcess() {
  mProcess = 0;
  if (mEnd.IsOpen()) RuntimeWakeOff(mEnd.Number());
  mEnd = Descriptor();
}

String Shell::Gathered() const {
  std::string text;
  AppendRuns(text, &Run::Output);
  if (mErrorCode != 0) AppendRuns(text, &Run::Errors);
  text += mRefusals;
  return {std::move(text)};
}

void Shell::AppendRuns(std::string& text, OutputFile Run::*stream) const {
  std::string check;  // what `sudo` writes of its own
  for (const auto& run : mRuns) {
    auto written = CommandText((run.*stream).Content(), mMark, run.Password);
    if (run.HasPassed) check = written;
    RemoveCommonPrefix(written, check);
    text += written;
  }
  if (!text.empty() && text.back() != '\n') text += '\n';
}

}  // namespace zelto
