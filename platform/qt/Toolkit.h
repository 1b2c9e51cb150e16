#pragma once

#include <QApplication>
#include <QPointer>

#include "platform/runtime/Wait.h"

namespace zelto {

// Keeps input from the windows while a handler waits.
class InputGuard : public QObject {
 protected:
  bool eventFilter(QObject* object, QEvent* event) override;
};

class EventLoopWaiter : public Waiter {
 public:
  void Await(int descriptor, int milliseconds) override;
  void WakeOn(int descriptor) override { mWakeDescriptors.push_back(descriptor); }
  void WakeOff(int descriptor) override { std::erase(mWakeDescriptors, descriptor); }
  const std::vector<int>& WakeDescriptors() const { return mWakeDescriptors; }

 private:
  std::vector<int> mWakeDescriptors;
};

// All state of the toolkit. StartToolkit makes it and EndToolkit ends it; exit, which Qt calls when
// the display goes, leaves it alone.
struct Toolkit {
  int ArgumentCount = 1;
  char Name[21] = "zelto-update-utility";
  char* Arguments[2] = {Name, nullptr};
  QApplication Application{ArgumentCount, Arguments};
  InputGuard Guard;
  EventLoopWaiter Waiter;
  QPointer<QWidget> EditedField;  // has the focus, or had it before a menu bar took it
  QString LastFolder;             // of the open dialog
};

Toolkit& TheToolkit();

}  // namespace zelto
