#pragma once

#include <QAbstractButton>
#include <QPointer>
#include <QProgressBar>
#include <QVBoxLayout>
#include <map>

#include "platform/Toolkit.h"

namespace zelto {

// The widget of a window: a content area for the controls, and a menu bar above it if there is one.
class TopLevel : public QWidget {
 public:
  explicit TopLevel(Window& window);

  QWidget& Content() { return *mContent; }
  void SetMenuBar(QWidget* bar) { mLayout->setMenuBar(bar); }
  // Gives a control its place in the order of Tab.
  void AddToTabOrder(QWidget& control, int tabIndex);
  // Return presses the default button, Esc the one for cancelling.
  void SetDefault(QAbstractButton& button, bool isDefault) { Mark(mDefault, button, isDefault); }
  void SetCancel(QAbstractButton& button, bool isCancel) { Mark(mCancel, button, isCancel); }
  // Shows that a command runs.
  void ShowActivity(bool isActive);
  // The window is gone; the widget goes as soon as it can.
  void Detach();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  using Button = QPointer<QAbstractButton>;

  static void Mark(Button& marked, QAbstractButton& button, bool isMarked);
  static bool Press(const Button& button);

  Window* mWindow;
  QVBoxLayout* mLayout;
  QWidget* mContent;
  std::multimap<int, QWidget*> mTabOrder;
  Button mDefault;
  Button mCancel;
  QProgressBar* mActivity = nullptr;
};

}  // namespace zelto
