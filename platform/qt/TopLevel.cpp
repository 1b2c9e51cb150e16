#include "platform/qt/TopLevel.h"

#include <QAbstractButton>
#include <QCloseEvent>
#include <QKeyEvent>
#include <algorithm>

#include "platform/Application.h"
#include "platform/Window.h"

namespace zelto {

namespace {

int TabIndexOf(const QWidget* widget) { return widget->property("TabIndex").toInt(); }

// The visible button with the mark, or null.
QAbstractButton* MarkedButton(const QWidget& content, const char* mark) {
  for (auto* button : content.findChildren<QAbstractButton*>()) {
    if (button->property(mark).toBool() && button->isVisible()) return button;
  }
  return nullptr;
}

}  // namespace

TopLevel::TopLevel(Window& window)
    : mWindow(&window), mLayout(new QVBoxLayout(this)), mContent(new QWidget(this)) {
  mLayout->setContentsMargins(0, 0, 0, 0);
  mLayout->setSpacing(0);
  mLayout->addWidget(mContent);
}

void TopLevel::OrderTabs() {
  auto widgets = mContent->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
  std::stable_sort(widgets.begin(), widgets.end(), [](const QWidget* a, const QWidget* b) {
    return TabIndexOf(a) < TabIndexOf(b);
  });
  for (qsizetype i = 1; i < widgets.size(); ++i) setTabOrder(widgets[i - 1], widgets[i]);
}

void TopLevel::ShowActivity(bool isActive) {
  delete std::exchange(mActivity, nullptr);
  if (!isActive) return;
  mActivity = new ActivityStrip(mContent);
  mActivity->setGeometry(0, mContent->height() - 8, mContent->width(), 4);
  mActivity->show();
}

void TopLevel::Detach() {
  mWindow = nullptr;
  deleteLater();
}

void TopLevel::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (!mWindow) return;
  const bool isWaitedFor = HandlerWaits();
  if (!AllowClose()) return;
  InvokeHandler([=, window = Ref<Window>(mWindow)] {
    window->Close();
    if (isWaitedFor) Quit(0);  // the handler that waits must not go on without its window
  });
}

void TopLevel::keyPressEvent(QKeyEvent* event) {
  const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  auto* button = isEnter ? qobject_cast<QAbstractButton*>(focusWidget()) : nullptr;
  if (isEnter && !button) button = MarkedButton(*mContent, "isDefault");
  const bool isEscape = event->key() == Qt::Key_Escape;
  if (isEscape) button = MarkedButton(*mContent, "isCancel");
  if (button) return button->click();
  if (isEscape && windowType() == Qt::Dialog) {
    close();
    return;
  }
  QWidget::keyPressEvent(event);
}

void TopLevel::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (!mWindow || event->type() != QEvent::ActivationChange) return;
  InvokeHandler([this, window = Ref<Window>(mWindow)] {
    isActiveWindow() ? window->CallActivated() : window->CallDeactivated();
  });
}

}  // namespace zelto
