#pragma once

#include <QObject>
#include <functional>

namespace zelto {

// Reports at each key of a widget whether Caps Lock is on, and false when the widget loses the
// focus. Only X11 and Wayland give the state.
class CapsLock : public QObject {
 public:
  CapsLock(QObject& widget, std::function<void(bool isOn)> report);

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  std::function<void(bool isOn)> mReport;
};

}  // namespace zelto
