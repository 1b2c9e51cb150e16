#pragma once

#include <thread>

namespace zelto {

// Runs the toolkit's event loop while the program waits.
class Waiter {
 public:
  virtual ~Waiter() = default;
  virtual void Await(int descriptor, int milliseconds) = 0;
  virtual void WakeOn(int descriptor) = 0;
  virtual void WakeOff(int descriptor) = 0;
};

// If the waiter is null (the default), RuntimeAwait runs no event loop.
void RuntimeSetWaiter(Waiter* waiter);

// Blocks until the descriptor is readable or the time is over; -1 means none. With a waiter, the
// windows are repainted meanwhile, but accept no input, and EndException ends the wait at Quit.
void RuntimeAwait(int descriptor, int milliseconds);

// Between the two calls, Application::DoEvents returns as soon as the descriptor is readable.
void RuntimeWakeOn(int descriptor);
void RuntimeWakeOff(int descriptor);

// Call it in each pass of a polling or scanning loop.
inline void RuntimeBackgroundTask() { std::this_thread::yield(); }

}  // namespace zelto
