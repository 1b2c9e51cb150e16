#include "platform/qt/ActivityStrip.h"

#include <QPainter>
#include <cstdlib>

namespace zelto {

namespace {

constexpr int period = 40;       // milliseconds
constexpr int stepsAcross = 40;  // from one end to the other

}  // namespace

ActivityStrip::ActivityStrip(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  mTimer.start(period, this);
}

void ActivityStrip::paintEvent(QPaintEvent*) {
  const int mark = width() / 4;
  const int step = std::abs(mStep % (2 * stepsAcross) - stepsAcross);
  const int left = (width() - mark) * step / stepsAcross;
  QPainter(this).fillRect(left, 0, mark, height(), palette().highlight());
}

void ActivityStrip::timerEvent(QTimerEvent*) {
  ++mStep;
  update();
}

}  // namespace zelto
