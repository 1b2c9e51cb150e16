#pragma once

#include <QAbstractButton>
#include <QPointer>
#include <QProgressBar>
#include <QVBoxLayout>
#include <map>

#include "platform/Toolkit.h"

namespace zelto {

// The widget of a window: an optional menu bar and, below it, the content area with the controls.
class TopLevel : public QWidget {
 public:
  explicit TopLevel(Window& window);

  QWidget& Content() { return *mContent; }
  void SetMenuBar(QWidget* bar) { mLayout->setMenuBar(bar); }
  // Inserts a control into the tab order.
  void AddToTabOrder(QWidget& control, int tabIndex);
  // Return presses the focused button, or the default button if no button has the focus. Esc
  // presses the cancel button.
  void SetDefault(QAbstractButton& button, bool isDefault) { Mark(mDefault, button, isDefault); }
  void SetCancel(QAbstractButton& button, bool isCancel) { Mark(mCancel, button, isCancel); }
  // Shows a progress bar after a moment, until the call with false.
  void ShowActivity(bool isActive);
  bool ShowsActivity() const { return mActivity && mActivity->isVisible(); }
  // Forgets the window and deletes the widget later.
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

TopLevel& TopLevelOf(WindowImp& window);
// Keeps the dialog above the parent.
void AttachTo(QWidget& dialog, WindowImp& parent);

}  // namespace zelto
