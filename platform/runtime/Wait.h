#pragma once

#include <thread>

namespace zelto {

// Serves the windows while the program waits.
class Waiter {
 public:
  virtual ~Waiter() = default;
  virtual void Await(int descriptor, int milliseconds) = 0;
  virtual void WakeOn(int descriptor) = 0;
  virtual void WakeOff(int descriptor) = 0;
};

// Null, as at the start: there is no window to serve.
void RuntimeSetWaiter(Waiter* waiter);

// Blocks until the descriptor is readable or the time, in milliseconds, is over; -1 stands for no
// descriptor and for no limit of time. Windows stay painted meanwhile and take no input.
void RuntimeAwait(int descriptor, int milliseconds);

// Lets Application::DoEvents return as soon as the descriptor is readable, until it is taken back.
void RuntimeWakeOn(int descriptor);
void RuntimeWakeOff(int descriptor);

// The yield of a polling or scanning loop, once in each pass.
inline void RuntimeBackgroundTask() { std::this_thread::yield(); }

}  // namespace zelto
