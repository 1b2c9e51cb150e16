#pragma once

#include <QVBoxLayout>
#include <QWidget>

#include "platform/Toolkit.h"
#include "platform/qt/ActivityStrip.h"

namespace zelto {

// The widget of a window: a ground for the controls, and a menu bar above it if there is one.
class TopLevel : public QWidget {
 public:
  explicit TopLevel(Window& window);

  QWidget& Content() { return *mContent; }
  void SetMenuBar(QWidget* bar) { mLayout->setMenuBar(bar); }
  // Gives the controls their places in the order of Tab.
  void OrderTabs();
  // Shows that a command runs.
  void ShowActivity(bool isActive);
  // The window is gone; the widget goes as soon as it can.
  void Detach();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  Window* mWindow;
  QVBoxLayout* mLayout;
  QWidget* mContent;
  ActivityStrip* mActivity = nullptr;
};

}  // namespace zelto
