#include "exec/Shell.h"

#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <random>
#include <utility>

#include "exec/Interpreter.h"
#include "platform/runtime/Plugins.h"
#include "platform/runtime/Wait.h"

namespace zelto {

namespace {

constexpr int notStarted = 127;

// The next four functions remove the text of `su` and `sudo` from `text`, from `start` on.

// Keeps the text between the first and the last mark, or all text if there is no mark.
void KeepMarked(std::string& text, std::size_t start, std::string_view mark) {
  const auto first = text.find(mark, start);
  if (first == std::string::npos) return;
  const auto last = text.rfind(mark);
  if (last != first) text.resize(last);
  text.erase(start, first + mark.size() - start);
}

// Removes the common prefix with `words`, cut after a blank or a newline if it is not all of them.
void RemoveLeading(std::string& text, std::size_t start, std::string_view words) {
  const auto rest = std::string_view(text).substr(start);
  const auto differs = std::mismatch(words.begin(), words.end(), rest.begin(), rest.end()).first;
  auto common = static_cast<std::size_t>(differs - words.begin());
  if (common < words.size()) common = words.substr(0, common).find_last_of(" \n") + 1;
  text.erase(start, common);
}

void KeepLast(std::string& text, std::size_t start, std::size_t size) {
  const auto length = text.size() - start;
  text.erase(start, length - std::min(length, size));
}

void EraseAll(std::string& text, std::size_t start, std::string_view part) {
  for (auto at = text.find(part, start); at != std::string::npos; at = text.find(part, at)) {
    text.erase(at, part.size());
  }
}

void EndLine(std::string& text) {
  if (!text.empty() && text.back() != '\n') text += '\n';
}

std::string NewMark() {
  std::random_device random;
  std::string mark;
  for (int i = 0; i < 4; ++i) mark += std::to_string(random()) + ".";
  return mark;
}

// Returns a pidfd, which becomes readable when the process ends, or -1.
int EndDescriptor([[maybe_unused]] pid_t process) {
#ifdef SYS_pidfd_open
  return static_cast<int>(syscall(SYS_pidfd_open, process, 0));
#else
  return -1;
#endif
}

}  // namespace

void PublishShell() {
  RuntimePublishPluginEntrypoints({
      {"Shell.__init", +[](Shell& shell) { shell.mMark = NewMark(); }},
      {"Shell.__exit", +[](Shell& shell) { shell.ReleaseProcess(); }},
      {"Shell.Execute(command as String)",
       +[](Shell& shell, const CommandLine& command) {
         shell.mQueue.push_back(command);
         if (!shell.IsRunning() || shell.mMode != 0) return;
         do RuntimeAwait(shell.mEnd, shell.mEnd < 0 ? 5 : -1);
         while (shell.IsRunning());
       }},
      {"Shell.ReadAll() as String", +[](Shell& shell) { return shell.Gathered(); }},
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
  if (!mOutput.IsOpen() || !mErrors.IsOpen()) {
    return Refuse("No file for the output can be made.");
  }
  mRuns.push_back({mOutput.Size(), mErrors.Size(), command.OutputSize});
  mProcess = StartInterpreter(command, mMark, mOutput.Descriptor(), mErrors.Descriptor());
  if (mProcess == 0) return Refuse(std::strerror(errno));
  mEnd = EndDescriptor(mProcess);
  if (mEnd >= 0) RuntimeWakeOn(mEnd);
}

void Shell::Refuse(const char* reason) {
  mErrorCode = notStarted;
  mRefusals += std::string("The command could not be started: ") + reason + "\n";
}

// Returns true if no command runs any more.
bool Shell::ReapChild() {
  if (mProcess == 0) return true;
  int status = 0;
  const pid_t ended = waitpid(mProcess, &status, WNOHANG);
  if (ended == 0 || (ended < 0 && errno == EINTR)) return false;
  mErrorCode = ended > 0 && WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  mRuns.back().Status = mErrorCode;
  ReleaseProcess();
  return true;
}

// Forgets the process and does not end it.
void Shell::ReleaseProcess() {
  mProcess = 0;
  if (mEnd < 0) return;
  RuntimeWakeOff(mEnd);
  close(std::exchange(mEnd, -1));
}

template <class Clean>
void Shell::AppendRuns(std::string& text, const OutputFile& file, std::size_t Run::*begin,
                       Clean clean) const {
  std::string around;
  for (auto run = mRuns.begin(); run != mRuns.end(); ++run) {
    const auto start = text.size();
    file.AppendTo(text, *run.*begin, run + 1 != mRuns.end() ? run[1].*begin : file.Size());
    KeepMarked(text, start, mMark);
    if (run->IsCheck()) around = text.substr(start);
    clean(*run, start, around);
  }
  EndLine(text);
}

// Reserves one buffer, because the text can be large.
String Shell::Gathered() const {
  std::string text;
  if (mOutput.IsOpen() && mErrors.IsOpen()) {
    text.reserve(mOutput.Size() + mErrors.Size() + mRefusals.size() + 2);
    AppendRuns(text, mOutput, &Run::Output, [&](const Run& run, auto start, const auto& around) {
      if (run.Status == 0 && run.OutputSize) return KeepLast(text, start, *run.OutputSize);
      RemoveLeading(text, start, around);
    });
    // A prompt ends without a newline, so a message follows on the same line. The text of a
    // successful check begins with the prompt of `su`. Before the first check, it is assumed to be
    // PAM's default.
    AppendRuns(text, mErrors, &Run::Errors, [&](const Run&, auto start, const auto& around) {
      RemoveLeading(text, start, around.empty() ? "Password: " : around);
      EraseAll(text, start, SudoPrompt);
    });
  }
  text += mRefusals;
  return {std::move(text)};
}

}  // namespace zelto
