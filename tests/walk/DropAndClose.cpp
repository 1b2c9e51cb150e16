#include <QApplication>
#include <QDropEvent>
#include <QFile>
#include <QGenericPlugin>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <QWidget>

// A plug-in of Qt for the random walk. When the file of ZELTO_DROP appears, drops a path on the
// main window and closes the window before the program can deliver the drop. An X client cannot do
// so.
class DropAndClose : public QGenericPlugin {
  Q_OBJECT
  Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "DropAndClose.json")

 public:
  QObject* create(const QString&, const QString&) override {
    auto* timer = new QTimer;
    connect(timer, &QTimer::timeout, timer, [] {
      if (QFile::remove(qEnvironmentVariable("ZELTO_DROP"))) Run();
    });
    timer->start(100);
    return timer;
  }

 private:
  static void Run() {
    auto* window = QApplication::activeWindow();
    auto* field = window ? window->findChild<QWidget*>("EditField1") : nullptr;
    if (!field) return;
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile("/dropped.tar.gz")});
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(field, &enter);
    QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QMetaObject::invokeMethod(window, &QWidget::close, Qt::QueuedConnection);
    QApplication::sendEvent(field, &drop);
  }
};

#include "DropAndClose.moc"
