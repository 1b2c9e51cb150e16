#include "platform/qt/TopLevel.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QTimer>

#include "platform/Application.h"
#include "platform/Window.h"

namespace zelto {

TopLevel::TopLevel(Window& window)
    : mWindow(&window), mLayout(new QVBoxLayout(this)), mContent(new QWidget(this)) {
  mLayout->setContentsMargins(0, 0, 0, 0);
  mLayout->setSpacing(0);
  mLayout->addWidget(mContent);
  // The controls have absolute positions, which fit together only with their texts on these sides.
  mContent->setLayoutDirection(Qt::LeftToRight);
}

void TopLevel::AddToTabOrder(QWidget& control, int tabIndex) {
  const auto place = mTabOrder.emplace(tabIndex, &control);
  if (place != mTabOrder.begin()) setTabOrder(std::prev(place)->second, &control);
  if (const auto next = std::next(place); next != mTabOrder.end()) {
    setTabOrder(&control, next->second);
  }
}

void TopLevel::ShowActivity(bool isActive) {
  delete std::exchange(mActivity, nullptr);
  mContent->update();
  if (!isActive) return;
  mActivity = new QProgressBar(mContent);
  mActivity->setRange(0, 0);  // indeterminate
  mActivity->setTextVisible(false);
  mActivity->setAttribute(Qt::WA_TransparentForMouseEvents);
  constexpr int height = 8;  // pixels; in a lower bar, the moving stripes do not show
  mActivity->setGeometry(0, mContent->height() - height, mContent->width(), height);
  mActivity->hide();
  constexpr int delay = 300;  // milliseconds; shorter waits do not flicker
  QTimer::singleShot(delay, mActivity, [this] {
    mActivity->show();
    mContent->update();
  });
}

void TopLevel::Detach() {
  mWindow = nullptr;
  deleteLater();
}

void TopLevel::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (!mWindow) return;
  const bool isWaiting = HandlerWaits();
  if (!AllowClose()) return;
  InvokeHandler(*mWindow, [isWaiting, &window = *mWindow] {
    window.Close();
    if (isWaiting && window.IsClosed())
      Quit(0);  // the handler that waits must not go on without its window
  });
}

void TopLevel::keyPressEvent(QKeyEvent* event) {
  const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  const Button focused = isEnter ? qobject_cast<QAbstractButton*>(focusWidget()) : nullptr;
  if (isEnter && Press(focused ? focused : mDefault)) return;
  const bool isEscape = event->key() == Qt::Key_Escape;
  if (isEscape && Press(mCancel)) return;
  if (isEscape && windowType() == Qt::Dialog) {
    close();
    return;
  }
  QWidget::keyPressEvent(event);
}

void TopLevel::Mark(Button& marked, QAbstractButton& button, bool isMarked) {
  if (isMarked || marked == &button) marked = isMarked ? &button : nullptr;
}

// Returns false if there is no button or it is hidden.
bool TopLevel::Press(const Button& button) {
  if (!button || !button->isVisible()) return false;
  button->click();
  return true;
}

void TopLevel::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (!mWindow || event->type() != QEvent::ActivationChange) return;
  InvokeHandler(*mWindow, [this] {
    if (isActiveWindow()) {
      mWindow->CallActivated();
    } else {
      mWindow->CallDeactivated();
    }
  });
}

}  // namespace zelto
