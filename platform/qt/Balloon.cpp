#include "platform/qt/Balloon.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QToolTip>
#include <algorithm>

#include "platform/qt/QtToolkit.h"

namespace zelto {

Balloon::Balloon(QWidget& anchor, const QString& text, BalloonEnd end)
    : QLabel(text, anchor.window(), Qt::ToolTip), mAnchor(&anchor), mEnd(end) {
  constexpr int lineLength = 40;  // characters
  constexpr int padding = 6;      // pixels
  setTextFormat(Qt::PlainText);
  setWordWrap(true);
  setMargin(padding);
  setFrameStyle(QFrame::Box);
  setPalette(QToolTip::palette());
  setFixedWidth(lineLength * fontMetrics().averageCharWidth() + 2 * padding);
  adjustSize();
  Place();
  show();
  mAnchor->setAccessibleDescription(text);
  qApp->installEventFilter(this);
}

Balloon::~Balloon() {
  if (mAnchor) mAnchor->setAccessibleDescription({});
}

bool Balloon::eventFilter(QObject* object, QEvent* event) {
  if (!mAnchor) return false;  // the window is being destroyed
  const auto type = event->type();
  const auto* window = mAnchor->window();
  const bool isOfWindow = object == window;
  if (isOfWindow && type == QEvent::Move) Place();
  if (isOfWindow && type == QEvent::ActivationChange) setVisible(window->isActiveWindow());
  const bool isLast = mEnd == BalloonEnd::NextKey && type == QEvent::KeyPress &&
                      !TheToolkit().Guard.IsRepeated(static_cast<const QKeyEvent&>(*event));
  if (isLast || (isOfWindow && type == QEvent::Hide)) Dismiss();
  return false;
}

// Places the balloon to the right of the widget, but not beyond the right edge of the screen.
void Balloon::Place() {
  constexpr int gap = 4;  // pixels
  const auto* screen = mAnchor->screen();
  const QPoint right = mAnchor->mapToGlobal(QPoint(mAnchor->width() + gap, 0));
  move(std::min(right.x(), screen->availableGeometry().right() + 1 - width()), right.y());
}

void Balloon::Dismiss() {
  qApp->removeEventFilter(this);
  hide();
  mAnchor->setAccessibleDescription({});
  mAnchor = nullptr;
  deleteLater();
}

}  // namespace zelto
