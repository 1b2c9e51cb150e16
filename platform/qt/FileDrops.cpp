#include "platform/qt/FileDrops.h"

#include <QAbstractScrollArea>
#include <QDropEvent>
#include <QMimeData>
#include <QTimer>
#include <QUrl>

#include "platform/Application.h"
#include "platform/Files.h"
#include "platform/qt/QtToolkit.h"

namespace zelto {

namespace {

bool IsOnThisMachine(const QUrl& url) {
  const QString host = url.host();
  return url.isLocalFile() &&
         (host.isEmpty() || host == "localhost" || host == QSysInfo::machineHostName().toLower());
}

// The path of the first file, in the file system's own bytes, which need not be valid UTF-8. Nil
// if the first URL does not name a file of this machine.
String FirstFile(const QList<QUrl>& urls) {
  if (urls.isEmpty() || !IsOnThisMachine(urls.constFirst())) return {};
  const QString encoded = urls.constFirst().path(QUrl::FullyEncoded);
  return QByteArray::fromPercentEncoding(encoded.toLatin1()).toStdString();
}

}  // namespace

FileDrops::FileDrops(EditField& field, QWidget& widget) : mField(field) {
  const auto* area = qobject_cast<QAbstractScrollArea*>(&widget);
  QWidget* target = area ? area->viewport() : &widget;
  mMark = new QRubberBand(QRubberBand::Rectangle, target);
  target->setAcceptDrops(true);
  target->installEventFilter(this);
}

bool FileDrops::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::DragLeave) mMark->hide();
  if (!IsAnyOf(*event, QEvent::DragEnter, QEvent::DragMove, QEvent::Drop)) return false;
  auto& drop = static_cast<QDropEvent&>(*event);
  const String path = FirstFile(drop.mimeData()->urls());
  drop.setDropAction(Qt::CopyAction);
  drop.setAccepted(MatchesFilter(path, mFilter));
  const bool isDropped = event->type() == QEvent::Drop;
  mMark->setGeometry(mMark->parentWidget()->rect());
  mMark->setVisible(drop.isAccepted() && !isDropped);
  // Deferred, because the source of the drag waits until the event has been handled.
  if (drop.isAccepted() && isDropped) {
    QTimer::singleShot(0, this, [=, this] { Deliver(path); });
  }
  return true;
}

void FileDrops::Deliver(const String& path) {
  if (HandlerWaits()) return;
  InvokeHandler(mField, [&] {
    const auto drag = RuntimeNewObject<DragItem>();
    drag->FolderItem(FolderItem::At(path));
    mField.Raise("DropObject", {Ref<Object>(drag), Int32(0)});
  });
}

}  // namespace zelto
