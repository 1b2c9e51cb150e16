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

// Returns the record in the update file, or nothing if it cannot be extracted.
std::optional<ContentRecord> ExtractRecord(Shell& shell, const String& path) {
  const ContentLock lock;
  shell.Execute(CredentialCheck(Globals::Passwd, Globals::User));
  shell.Execute(MemberExtract(Globals::Passwd, Globals::User, path));
  const auto size = ContentRecordSize();
  if (shell.ErrorCode() != 0 || !size) return std::nullopt;
  shell.Execute(MemberRead(Globals::Passwd, Globals::User, *size));
  return ReadContentRecord(shell.ReadAll());
}

}  // namespace

bool Window1::CheckFile(const String&) {
  const auto shell = New<Shell>();
  if (const auto record = ExtractRecord(*shell, EditField1()->Text())) {
    stProduct()->Text(record->Product);
    stVersion()->Text(record->Version);
    EditField2()->Text(record->Description);
    return true;
  }
  const auto dialog = New<MessageDialog>();
  dialog->Message("Invalid Update File");
  dialog->Explanation(InvalidFileExplanation());
  dialog->ActionButton()->Caption("Keep");
  dialog->CancelButton()->Visible(true);
  return dialog->ShowModalWithin(Ref<Window>(this)) == dialog->ActionButton();
}

}  // namespace zelto
