#include "core/FileTypes1.h"
#include "core/Globals.h"
#include "platform/MessageDialog.h"
#include "ui/Window1.h"
#include "update/POSIXPath.h"

namespace zelto {

void Window1::EditField1_Open() { EditField1()->AcceptFileDrop(*FileTypes1::gzipTarFile()); }

void Window1::EditField1_DropObject(const Ref<DragItem>& obj, Int32) {
  if (!obj->FolderItemAvailable()) return;
  Globals::thePatchName = File::POSIXPath(obj->FolderItem());
  EditField1()->Text(Globals::thePatchName);
}

void Window1::EditField1_TextChange() {
  if (LenB(EditField1()->Text()) == 0) {
    pbUpdate()->Enabled(false);
    pbTest()->Enabled(false);
    return;
  }
  if (RuntimeStringCompare(Right(EditField1()->Text(), 2), "gz") != 0) return;
  if (CheckFile(EditField1()->Text())) {
    pbUpdate()->Enabled(true);
    pbTest()->Enabled(true);
  } else {
    EditField1()->Text({});
  }
}

void Window1::BevelButton1_Action() {
  const auto item = RuntimeGetOpenFolderItem(*FileTypes1::gzipTarFile());
  if (item && item->IsReadable()) {
    EditField1()->Text(UnixpathMBS(item));
    return;
  }
  const auto dialog = New<MessageDialog>();
  dialog->Message("Unable to access file.");
  dialog->Explanation("I am unable to open the file selected for reading.");
  EditField1()->Text({});
  EditField2()->Text({});
  dialog->ShowModalWithin(Ref<Window>(this));
}

}  // namespace zelto
