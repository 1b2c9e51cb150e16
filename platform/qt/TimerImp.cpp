#include <QTimer>

#include "platform/Application.h"
#include "platform/Control.h"

namespace zelto {

namespace {

class QtTimerImp : public TimerImp {
 public:
  explicit QtTimerImp(Timer& timer) {
    QObject::connect(&mTimer, &QTimer::timeout, &mTimer,
                     [&timer] { InvokeHandler(timer, [&] { timer.Fire(); }); });
  }

  void Start(Int32 milliseconds, bool repeated) override {
    mTimer.setSingleShot(!repeated);
    mTimer.start(milliseconds);
  }
  void Stop() override { mTimer.stop(); }

 private:
  QTimer mTimer;
};

}  // namespace

std::unique_ptr<TimerImp> NewTimerImp(Timer& timer) { return std::make_unique<QtTimerImp>(timer); }

}  // namespace zelto
