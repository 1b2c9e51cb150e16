#pragma once

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QStandardPaths>
#include <concepts>

#include "platform/runtime/Wait.h"

namespace zelto {

// Discards input events while a handler waits, and repeated keys that would press a button.
class InputGuard : public QObject {
 public:
  bool IsRepeated(const QKeyEvent& press) const;

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  // A key that is held down must not answer a dialog that opens meanwhile.
  bool PressesAgain(const QObject& receiver, const QKeyEvent& press) const;

  int mReleasedKey = 0;
  quint64 mReleaseTime = 0;  // milliseconds
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

// All state of the toolkit. StartToolkit creates it and EndToolkit destroys it. If the connection
// to the display breaks, Qt calls exit, which does not destroy this state.
struct Toolkit {
  int ArgumentCount = 1;
  char Name[21] = "zelto-update-utility";
  char* Arguments[2] = {Name, nullptr};
  QApplication Application{ArgumentCount, Arguments};
  InputGuard Guard;
  EventLoopWaiter Waiter;
  QPointer<QWidget> EditedField;  // the last focused widget other than a menu bar
  // Where the next open dialog starts. Empty: the current folder.
  QString LastFolder =
      QStandardPaths::locate(QStandardPaths::DownloadLocation, {}, QStandardPaths::LocateDirectory);
};

Toolkit& TheToolkit();

bool IsAnyOf(const QEvent& event, std::same_as<QEvent::Type> auto... types) {
  return ((event.type() == types) || ...);
}

}  // namespace zelto
