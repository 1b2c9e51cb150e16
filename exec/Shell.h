#pragma once

#include <sys/types.h>

#include <deque>
#include <vector>

#include "exec/CommandLines.h"
#include "exec/OutputFile.h"
#include "platform/runtime/Object.h"

namespace zelto {

// Runs command lines with `sh`, each in its own session. A running command continues if the object
// is destroyed or the program ends.
class Shell : public Object {
 public:
  Shell();
  ~Shell() override;

  // 0 (default): Execute blocks until the command has ended. 2: Execute returns at once, and a
  // command line is queued while another runs. Set the mode before the first Execute.
  void Mode(Int32 mode);
  // If the line contains NUL or a newline or cannot be started: ErrorCode 127, reason in ReadAll.
  void Execute(const CommandLine& command);

  // A command has ended when all its processes have closed its output.
  bool IsRunning() const { return mIsRunning || !mQueue.empty(); }
  // Notices the end of the command and starts the next one. In Mode 2, call it until IsRunning is
  // False.
  void Poll();
  // The exit status of the last command that ended, or 128 plus the signal that ended it.
  Int32 ErrorCode() const { return mErrorCode; }
  // What all commands wrote so far, without the text of `su` and `sudo`: standard output in order,
  // and then standard error, but only if the last command failed.
  String ReadAll();
  // The identity of the record that the last command extracted or read. Nil if there is none.
  String RecordIdentity() const;

 private:
  friend void PublishShell();

  // Keeps no text of the command, which would be a second copy of the password.
  struct Run {
    String Password;
    bool IsCheck = false;
    OutputFile Output = {};
    OutputFile Errors = {};
    bool HasPassed = false;

    bool IsHeld() const { return Output.IsHeld() || Errors.IsHeld(); }
  };

  void Wait();
  void Advance();
  void Start(const CommandLine& command);
  void NotStarted(const char* reason);
  void RefuseAccount(const char* reason);
  void Refuse(Int32 status, const std::string& reason);
  bool HasEnded();
  void ReapChild();
  void ReleaseProcess();
  String Gathered() const;
  void AppendRuns(std::string& text, OutputFile Run::*stream) const;

  Int32 mMode = 0;
  Int32 mErrorCode = 0;
  bool mIsRunning = false;
  pid_t mProcess = 0;  // the first process of the command; 0 after its end
  Descriptor mEnd;     // a pidfd, readable after the end of mProcess; not open without pidfd_open
  std::deque<CommandLine> mQueue;
  std::vector<Run> mRuns;
  std::string mMark;      // random, written by the wrapper around a command's output
  std::string mRefusals;  // reasons why the program refused a command line or its success
};

void PublishShell();

}  // namespace zelto
