#pragma once

#include <QBasicTimer>
#include <QWidget>

namespace zelto {

// A thin strip in which a mark goes to and fro for as long as the strip lives.
class ActivityStrip : public QWidget {
 public:
  explicit ActivityStrip(QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  QBasicTimer mTimer;
  int mStep = 0;
};

}  // namespace zelto
