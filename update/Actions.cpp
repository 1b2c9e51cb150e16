#include "update/Actions.h"

#include "core/App.h"
#include "platform/runtime/Wait.h"

namespace zelto {

void AwaitCommands(Shell& shell) {
  do {
    App()->DoEvents(10);
    RuntimeBackgroundTask();
    shell.Poll();
  } while (shell.IsRunning());
}

void DescribeFailure(MessageDialog& dialog, const String& path, Shell& shell) {
  dialog.Message("Bad update file");
  dialog.Explanation("Errors were reported when testing the file " + path + EndOfLine() +
                     EndOfLine() + shell.ReadAll());
}

}  // namespace zelto
