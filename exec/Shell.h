#pragma once

#include <sys/types.h>

#include <deque>
#include <vector>

#include "exec/CommandLines.h"
#include "exec/OutputFile.h"
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
  // What the commands so far wrote themselves: standard output in order, then standard error. What
  // `su` and `sudo` write is not part of it unless they fail.
  String ReadAll();

 private:
  friend struct ShellPlugin;

  // Where the output of a command that was started begins, and what is known of it.
  struct Run {
    std::size_t Output = 0;
    std::size_t Errors = 0;
    std::optional<std::size_t> OutputSize;
    Int32 Status = -1;
    // A command that succeeds and writes nothing leaves only what `su` and `sudo` write around it.
    bool IsCheck() const { return Status == 0 && OutputSize == 0; }
  };

  void Start(const CommandLine& command);
  void Refuse(const char* reason);
  bool ReapChild();
  void ReleaseProcess();
  String Gathered() const;
  // What the run itself wrote. The last parameter is what `su` and `sudo` wrote in the check
  // before.
  void AppendOutput(std::string& text, std::size_t run, std::string& around) const;
  void AppendErrors(std::string& text, std::size_t run, std::string& around) const;

  Int32 mMode = 0;
  Int32 mErrorCode = 0;
  pid_t mProcess = 0;  // 0: none runs
  int mEnd = -1;       // readable when the process has ended; -1 where there is no such thing
  std::deque<CommandLine> mQueue;
  // Files, and no pipes: a command never blocks on them, nor dies of a reader's death.
  OutputFile mOutput;
  OutputFile mErrors;
  std::vector<Run> mRuns;
  std::string mMark;  // what the front end writes around a command's output; nobody can guess it
  std::string mRefusals;  // why lines were not started
};

// Publishes the plug-in that the shell is.
void PublishShell();

}  // namespace zelto
