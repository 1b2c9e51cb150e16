#include "platform/qt/QtToolkit.h"

#include <QAbstractButton>
#include <QEventLoop>
#include <QImageReader>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QScreen>
#include <QSettings>
#include <QShortcutEvent>
#include <QSocketNotifier>
#include <QTimer>

#include "platform/Application.h"
#include "platform/Files.h"
#include "platform/Toolkit.h"
#include "platform/qt/Accessibility.h"
#include "platform/qt/Portal.h"
#include "platform/qt/StartMessages.h"
#include "platform/qt/Text.h"
#include "platform/qt/TopLevel.h"

namespace zelto {

namespace {

bool IsInput(const QEvent& event) {
  if (IsAnyOf(event, QEvent::Enter, QEvent::HoverEnter, QEvent::HoverMove, QEvent::HoverLeave)) {
    return false;
  }
  return event.isInputEvent() || IsAnyOf(event, QEvent::Shortcut, QEvent::InputMethod,
                                         QEvent::DragEnter, QEvent::DragMove, QEvent::Drop);
}

bool IsQuitRequest(const QEvent& event) {
  if (event.type() == QEvent::Quit) return true;
  return event.type() == QEvent::Shortcut &&
         static_cast<const QShortcutEvent&>(event).key() == QKeySequence(QKeySequence::Quit);
}

void QuitIfAllowed() {
  if (AllowClose()) InvokeHandler([] { Quit(0); });
}

Toolkit* toolkit = nullptr;

// Runs an event loop until a descriptor is readable or the time, if not negative, is over.
void ServeUntil(const std::vector<int>& descriptors, int milliseconds) {
  QEventLoop loop;
  for (const int descriptor : descriptors) {
    auto* notifier = new QSocketNotifier(descriptor, QSocketNotifier::Read, &loop);
    QObject::connect(notifier, &QSocketNotifier::activated, &loop, &QEventLoop::quit);
  }
  if (milliseconds >= 0) {
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
  }
  loop.exec();
}

QIcon ApplicationIcon() {
  QIcon icon;
  for (const char* const file : {":/48x48.png", ":/128x128.png"}) {
    QImageReader reader(file, "png");
    reader.setAutoDetectImageFormat(false);  // detection loads the plug-ins of all formats
    icon.addPixmap(QPixmap::fromImage(reader.read()));
  }
  return icon;
}

}  // namespace

Toolkit& TheToolkit() { return *toolkit; }

// Qt takes a repetition for a new press if it has not yet read the press when it handles the
// release before it. Both have the same time.
bool InputGuard::IsRepeated(const QKeyEvent& press) const {
  return press.isAutoRepeat() || (press.timestamp() != 0 && press.timestamp() == mReleaseTime &&
                                  press.key() == mReleasedKey);
}

bool InputGuard::PressesAgain(const QObject& receiver, const QKeyEvent& press) const {
  if (!receiver.isWidgetType() || !IsRepeated(press)) return false;
  if (press.key() == Qt::Key_Space) return qobject_cast<const QAbstractButton*>(&receiver);
  const bool canPress = press.key() == Qt::Key_Return || press.key() == Qt::Key_Enter ||
                        press.key() == Qt::Key_Escape;
  return canPress && !qobject_cast<const QPlainTextEdit*>(&receiver);
}

bool InputGuard::eventFilter(QObject* receiver, QEvent* event) {
  if (IsAnyOf(*event, QEvent::KeyPress, QEvent::KeyRelease)) {
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (event->type() == QEvent::KeyRelease) {
      mReleasedKey = key.key();
      mReleaseTime = key.timestamp();
    } else if (PressesAgain(*receiver, key)) {
      return true;
    }
  }
  if (!HandlerWaits()) return false;
  if (IsQuitRequest(*event)) {
    QuitIfAllowed();
    return true;
  }
  if (!IsInput(*event)) return false;
  event->ignore();
  return true;
}

void EventLoopWaiter::Await(int descriptor, int milliseconds) {
  SetPhase(Phase::Blocked);
  ServeUntil(descriptor < 0 ? std::vector<int>() : std::vector{descriptor}, milliseconds);
  ThrowIfQuitting();
}

void StartToolkit() {
  // Qt's dialogs must not store settings in the user's home folder.
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, "/dev/null");
  CollectStartMessages([] {
    toolkit = new Toolkit;
    if (!QGuiApplication::primaryScreen()) qFatal("there is no screen");
  });
  QApplication::setWindowIcon(ApplicationIcon());
  QApplication::setApplicationVersion(ZELTO_VERSION);
  QApplication::setDesktopFileName("local.zelto.update_utility");
  QApplication::setQuitOnLastWindowClosed(false);
  qApp->installEventFilter(&toolkit->Guard);
  SetUpAccessibility();
  ReadPortalSettings();
  RuntimeSetWaiter(&toolkit->Waiter);
}

void EndToolkit() {
  RuntimeSetWaiter(nullptr);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  delete toolkit;
  toolkit = nullptr;
}

Int32 RunLoop() { return QApplication::exec(); }

void ServeEvents(Int32 milliseconds) {
  ServeUntil(TheToolkit().Waiter.WakeDescriptors(), milliseconds);
}

void EndLoops() { QCoreApplication::exit(); }

void ShowPhase(Phase phase) {
  while (QGuiApplication::overrideCursor()) QGuiApplication::restoreOverrideCursor();
  if (phase == Phase::Busy) QGuiApplication::setOverrideCursor(Qt::BusyCursor);
  if (phase == Phase::Blocked) QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  for (auto* widget : QApplication::topLevelWidgets()) {
    auto* top = dynamic_cast<TopLevel*>(widget);
    if (top && top->isVisible()) {
      top->ShowActivity(phase == Phase::Busy || phase == Phase::Blocked);
    }
  }
}

void RuntimeBeep() { QApplication::beep(); }

std::optional<std::pair<Int32, Int32>> PrimaryScreenSize() {
  const auto* screen = QGuiApplication::primaryScreen();
  if (!screen) return std::nullopt;
  return std::pair(screen->size().width(), screen->size().height());
}

String ApplicationVersion() { return FromQString(QCoreApplication::applicationVersion()); }

Ref<FolderItem> AppFolderItemGetter() {
  return FolderItem::At(FromQString(QCoreApplication::applicationFilePath()));
}

}  // namespace zelto
