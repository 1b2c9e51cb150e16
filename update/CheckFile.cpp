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

// Returns true if the extraction succeeded.
bool ExtractRecord(Shell& shell, const String& path) {
  shell.Execute(CredentialCheck(Globals::Passwd, Globals::User));
  shell.Execute(MemberExtract(Globals::Passwd, Globals::User, path));
  return shell.ErrorCode() == 0;
}

// Nothing if the record is not the extracted one any more: another utility has extracted its own.
std::optional<ContentRecord> ReadRecord(Shell& shell) {
  const auto extracted = shell.RecordIdentity();
  shell.Execute(MemberRead(Globals::Passwd, Globals::User));
  if (extracted.IsNil() || !(shell.RecordIdentity() == extracted)) return std::nullopt;
  return ReadContentRecord(shell.ReadAll());
}

}  // namespace

bool Window1::ShowRecord() {
  const auto shell = New<Shell>();
  const ContentLock lock;
  if (!ExtractRecord(*shell, EditField1()->Text())) return false;
  const auto record = ReadRecord(*shell);
  const auto shown = record.value_or(ContentRecord{});  // never the values of another file
  stProduct()->Text(shown.Product);
  stVersion()->Text(shown.Version);
  EditField2()->Text(shown.Description);
  return record.has_value();
}

bool Window1::CheckFile(const String&) {
  if (ShowRecord()) return true;
  const auto dialog = New<MessageDialog>();
  dialog->Message("Invalid Update File");
  dialog->Explanation(InvalidFileExplanation());
  dialog->ActionButton()->Caption("Keep");
  dialog->CancelButton()->Visible(true);
  return dialog->ShowModalWithin(Ref<Window>(this)) == dialog->ActionButton();
}

}  // namespace zelto
