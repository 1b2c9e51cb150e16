#include "platform/runtime/Wait.h"

#include <poll.h>

namespace zelto {

namespace {

Waiter* currentWaiter = nullptr;

}  // namespace

void RuntimeSetWaiter(Waiter* waiter) { currentWaiter = waiter; }

void RuntimeAwait(int descriptor, int milliseconds) {
  if (currentWaiter) return currentWaiter->Await(descriptor, milliseconds);
  pollfd entry{.fd = descriptor, .events = POLLIN, .revents = 0};
  poll(&entry, 1, milliseconds);
}

void RuntimeWakeOn(int descriptor) {
  if (currentWaiter) currentWaiter->WakeOn(descriptor);
}

void RuntimeWakeOff(int descriptor) {
  if (currentWaiter) currentWaiter->WakeOff(descriptor);
}

}  // namespace zelto
