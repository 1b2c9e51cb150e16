#include "platform/qt/CapsLock.h"

#include <QKeyEvent>

namespace zelto {

CapsLock::CapsLock(QObject& widget, std::function<void(bool isOn)> report)
    : mReport(std::move(report)) {
  widget.installEventFilter(this);
}

bool CapsLock::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::FocusOut) mReport(false);
  if (event->type() != QEvent::KeyPress) return false;
  constexpr quint32 lock = 2;  // the modifier "Lock" of X11 and XKB
  const auto& key = static_cast<const QKeyEvent&>(*event);
  const bool wasOn = key.nativeModifiers() & lock;  // before this key
  mReport(wasOn != (key.key() == Qt::Key_CapsLock));
  return false;
}

}  // namespace zelto
