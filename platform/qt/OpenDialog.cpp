#include <QApplication>
#include <QFileDialog>

#include "platform/Application.h"
#include "platform/Files.h"
#include "platform/qt/Text.h"

namespace zelto {

namespace {

// "gzip compressed tar file (*.tgz *.tar.gz)"
QString NameFilter(const String& filter) {
  QStringList patterns;
  for (const auto& extension : FilterExtensions(filter))
    patterns << "*." + ToDisplayText(extension);
  return ToDisplayText(filter) + " (" + patterns.join(' ') + ")";
}

}  // namespace

Ref<FolderItem> RuntimeGetOpenFolderItem(const String& filter) {
  static QString lastFolder;
  AllowInput();
  QFileDialog dialog(QApplication::activeWindow(), {}, lastFolder, NameFilter(filter));
  dialog.setFileMode(QFileDialog::ExistingFile);
#ifndef Q_OS_MACOS
  // The desktops' own dialogs tell upper case from lower in a filter.
  dialog.setOption(QFileDialog::DontUseNativeDialog);
#endif
  const bool isChosen = dialog.exec() == QDialog::Accepted;
  ThrowIfQuitting();
  if (!isChosen) return nullptr;
  lastFolder = dialog.directory().absolutePath();
  return FolderItem::At(FromQString(dialog.selectedFiles().constFirst()));
}

}  // namespace zelto
