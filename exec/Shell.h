#pragma once

#include <sys/types.h>

#include <cstdio>
#include <deque>
#include <memory>
#include <vector>

#include "exec/CommandLines.h"
#include "platform/runtime/Object.h"

namespace zelto {

// Runs command lines by the system's interpreter, each in a session of its own, so that nothing
// that happens to this process cuts a command off; an object that goes away leaves its running
// command to itself.
class Shell : public Object {
 public:
  Shell();
  ~Shell() override;

  // 0: Execute blocks until the command has ended. 2: Execute returns at once; a line that comes
  // while another runs is queued behind it. Set before the first Execute.
  void Mode(Int32 mode);
  // A line with a NUL or a line end in it, or one that cannot be started, ends at once with
  // ErrorCode 127 and the reason in the text.
  void Execute(const CommandLine& command);

  // True until the last command has ended. In Mode 2 it is this call that starts the next line.
  bool IsRunning();
  // The exit status of the last command that ended, 128 and the signal if one ended it.
  Int32 ErrorCode() const { return mErrorCode; }
  // The standard output of all commands so far in order, then their standard error, without the
  // questions for a password.
  String ReadAll();

 private:
  friend struct ShellPlugin;

  using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

  void Start(const CommandLine& command);
  void Refuse(const char* reason);
  bool ReapChild();
  void ReleaseProcess();
  String Gathered();
  // In the standard error that begins at the place in the text.
  void RemoveQuestions(std::string& text, std::size_t errors) const;

  Int32 mMode = 0;
  Int32 mErrorCode = 0;
  pid_t mProcess = 0;  // 0: none runs
  int mEnd = -1;       // readable when the process has ended; -1 where there is no such thing
  std::deque<CommandLine> mQueue;
  // Unlinked files, and no pipes: a command never blocks on them, nor dies of a reader's death.
  File mOutput;
  File mErrors;
  std::vector<std::size_t> mErrorStarts;  // where each command's errors begin, the last one's first
  std::string mRefusals;                  // why lines were not started
};

// Publishes the plug-in that the shell is.
void PublishShell();

}  // namespace zelto
