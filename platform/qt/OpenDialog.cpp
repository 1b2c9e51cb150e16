#include <QFileDialog>

#include "platform/Application.h"
#include "platform/Files.h"
#include "platform/qt/QtToolkit.h"
#include "platform/qt/Text.h"

namespace zelto {

namespace {

// Patterns in native dialogs are case-sensitive. "*.[tT][gG][zZ]" matches either case.
QString Pattern(const QString& extension) {
  QString pattern = "*.";
  for (const QChar c : extension) {
    pattern += c.isLetter() ? '[' + QString(c.toLower()) + c.toUpper() + ']' : QString(c);
  }
  return pattern;
}

QString NameFilter(const String& filter) {
  QStringList patterns;
  for (const auto& extension : FilterExtensions(filter))
    patterns << Pattern(ToDisplayText(extension));
  return ToDisplayText(filter) + " (" + patterns.join(' ') + ")";
}

}  // namespace

Ref<FolderItem> RuntimeGetOpenFolderItem(const String& filter) {
  auto& lastFolder = TheToolkit().LastFolder;
  SetPhase(Phase::InDialog);
  QFileDialog dialog(QApplication::activeWindow(), "Open", lastFolder, NameFilter(filter));
  dialog.setFileMode(QFileDialog::ExistingFile);
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  const bool isChosen = dialog.exec() == QDialog::Accepted;
  ThrowIfQuitting();
  const auto files = dialog.selectedFiles();  // may be empty if the file was just made unreadable
  if (!isChosen || files.isEmpty()) return nullptr;
  lastFolder = QFileInfo(files.constFirst()).absolutePath();
  return FolderItem::At(FromQString(files.constFirst()));
}

}  // namespace zelto
