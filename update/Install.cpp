#include "core/Globals.h"
#include "platform/Application.h"
#include "ui/Window1.h"
#include "update/Actions.h"
#include "update/ContentLock.h"

namespace zelto {

namespace {

// Returns when the last command has ended.
void Extract(Shell& shell, const String& path) {
  const ContentLock lock;
  shell.Execute(ForgetCredentials());
  shell.Execute(CredentialCheck(Globals::Passwd, Globals::User));
  shell.Execute(FullExtract(Globals::Passwd, Globals::User, path));
  // After the commands have started, because the desktop's services can fail to answer.
  const auto inhibitor = InhibitSessionEnd("Installing an update");
  AwaitCommands(shell);
}

void DescribeSuccess(MessageDialog& dialog) {
  dialog.Message("Update Completed Successfullly");  // fixed text
  dialog.Explanation("The update was applied successfully" + EndOfLine() + EndOfLine() +
                     "Would you like to apply another patch file or quit?");
  dialog.ActionButton()->Caption("Quit");
  dialog.CancelButton()->Caption("Install Another");
  dialog.CancelButton()->Visible(true);
}

}  // namespace

void Window1::pbUpdate_Action() {
  const auto shell = New<Shell>();
  const auto dialog = New<MessageDialog>();
  shell->Mode(2);
  stStatus()->Text("Installing Update...");
  OnRefusedClose([status = stStatus()] {
    status->ShowBalloon("Installing. Close again to leave; the installation continues.");
  });
  Extract(*shell, EditField1()->Text());
  if (shell->ErrorCode() != 0) {
    DescribeFailure(*dialog, EditField1()->Text(), *shell);
    stStatus()->Text("Update File Read Error");
    dialog->ShowModalWithin(Ref<Window>(this));
    return;
  }
  DescribeSuccess(*dialog);
  stStatus()->Text("Update completed successfully");
  if (dialog->ShowModalWithin(Ref<Window>(this)) == dialog->ActionButton()) Quit(0);
  EditField1()->Text({});
  EditField2()->Text({});
  stProduct()->Text({});
  stVersion()->Text({});
}

}  // namespace zelto
