#pragma once

#include "exec/Shell.h"
#include "platform/MessageDialog.h"

namespace zelto {

// Serves the windows until the shell's commands have ended.
void AwaitCommands(Shell& shell);

// Sets the texts of a dialog on an action that failed for the file at the path.
void DescribeFailure(MessageDialog& dialog, const String& path, Shell& shell);

}  // namespace zelto
