#include <optional>

#include "core/Globals.h"
#include "exec/Shell.h"
#include "platform/MessageDialog.h"
#include "ui/Window1.h"
#include "update/ContentLock.h"
#include "update/ContentRecord.h"

namespace zelto {

namespace {

String InvalidFileExplanation() {
  return "This does not appear to be a properly configured ZELTO Group update file." + EndOfLine() +
         EndOfLine() +
         "Unless you know what the results of a blind tar extraction of the file dropped will do, "
         "we recommend that you re-download the patch file from the ZELTO Group website or contact "
         "our technical support team for further assistance." +
         EndOfLine() + EndOfLine() +
         "If you want to try to install this file anyway, click the Keep button";
}

// The record in the output of the shell. Nothing if the record on the disk is not the extracted one
// any more: another utility has extracted its own.
std::optional<ContentRecord> ReadRecord(Shell& shell) {
  const auto extracted = shell.RecordIdentity();
  shell.Execute(MemberRead(Globals::Passwd, Globals::User));
  if (extracted.IsNil() || !(shell.RecordIdentity() == extracted)) return std::nullopt;
  return ReadContentRecord(shell.ReadAll());
}

}  // namespace

bool Window1::CheckFile(const String&) {
  const auto shell = New<Shell>();
  {
    const ContentLock lock;
    shell->Execute(CredentialCheck(Globals::Passwd, Globals::User));
    shell->Execute(MemberExtract(Globals::Passwd, Globals::User, EditField1()->Text()));
    if (shell->ErrorCode() == 0) {
      const auto record = ReadRecord(*shell);
      const auto shown = record.value_or(ContentRecord{});
      stProduct()->Text(shown.Product);
      stVersion()->Text(shown.Version);
      EditField2()->Text(shown.Description);
      if (record) return true;
    }
  }
  const auto dialog = New<MessageDialog>();
  dialog->Message("Invalid Update File");
  dialog->Explanation(InvalidFileExplanation());
  dialog->ActionButton()->Caption("Keep");
  dialog->CancelButton()->Visible(true);
  return dialog->ShowModalWithin(Ref<Window>(this)) == dialog->ActionButton();
}

}  // namespace zelto
