#pragma once

#include "exec/Shell.h"
#include "platform/MessageDialog.h"

namespace zelto {

// Runs the event loop until the shell's commands have ended.
void AwaitCommands(Shell& shell);

// Sets the dialog's texts after an action has failed for the file at `path`.
void DescribeFailure(MessageDialog& dialog, const String& path, Shell& shell);

}  // namespace zelto
