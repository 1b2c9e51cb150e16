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

  // True while a command runs or is queued. In Mode 2 this call starts the next queued command.
  bool IsRunning();
  // The exit status of the last command that ended, or 128 plus the signal that ended it.
  Int32 ErrorCode() const { return mErrorCode; }
  // The output of all commands so far: standard output in order, then standard error. The prompts
  // of `su` and `sudo` are removed. PAM messages are removed if the front end marks the output, or
  // if the last successful credential check printed the same ones.
  String ReadAll();

 private:
  friend void PublishShell();

  // A started command line. Output and Errors are the offsets in both files at which its text
  // begins. Status is -1 until it has ended.
  struct Run {
    std::size_t Output = 0;
    std::size_t Errors = 0;
    std::optional<std::size_t> OutputSize;
    Int32 Status = -1;
    // A successful credential check prints nothing, so its text is from `su` and `sudo`.
    bool IsCheck() const { return Status == 0 && OutputSize == 0; }
  };

  void Start(const CommandLine& command);
  void Refuse(const char* reason);
  bool ReapChild();
  void ReleaseProcess();
  String Gathered() const;
  // Appends the text of all runs from the file. `begin` is the member of Run with the offset in it.
  // `clean(run, start, around)` edits the text of one run from `start` on. `around` is the text of
  // the last successful credential check up to this run. `su` and `sudo` can print it again.
  template <class Clean>
  void AppendRuns(std::string& text, const OutputFile& file, std::size_t Run::*begin,
                  Clean clean) const;

  Int32 mMode = 0;
  Int32 mErrorCode = 0;
  pid_t mProcess = 0;  // 0: no command runs
  int mEnd = -1;       // a pidfd, readable when the process has ended; -1 without pidfd_open
  std::deque<CommandLine> mQueue;
  // Files, not pipes: a command does not block on a file and gets no SIGPIPE if this process ends.
  OutputFile mOutput;
  OutputFile mErrors;
  std::vector<Run> mRuns;
  std::string mMark;      // random, written by the front end around a command's output
  std::string mRefusals;  // reasons why command lines were not started
};

void PublishShell();

}  // namespace zelto
