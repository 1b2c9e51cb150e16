#pragma once

#include "platform/runtime/Descriptor.h"
#include "platform/runtime/String.h"

namespace zelto {

// An unnamed file for one output stream of a command, in memory where the system supports it. A
// file and not a pipe: a command does not block on it, and continues after this process has ended.
class OutputFile {
 public:
  OutputFile();

  // The end for the command. It appends. Not open if the file cannot be created.
  Descriptor Writer() const;
  // True until each process that inherited the writer has closed it.
  bool IsHeld() const;
  String Content() const;

 private:
  Descriptor mReader;
};

}  // namespace zelto
