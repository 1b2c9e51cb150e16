#include "platform/runtime/Wait.h"

#include <poll.h>

namespace zelto {

namespace {

void OnlyWait(int descriptor, int milliseconds) {
  pollfd entry{.fd = descriptor, .events = POLLIN, .revents = 0};
  poll(&entry, 1, milliseconds);
}

Waiter currentWaiter = OnlyWait;
std::vector<int> wakeDescriptors;

}  // namespace

void RuntimeAwait(int descriptor, int milliseconds) { currentWaiter(descriptor, milliseconds); }

void RuntimeSetWaiter(Waiter waiter) { currentWaiter = waiter ? waiter : OnlyWait; }

void RuntimeWakeOn(int descriptor) { wakeDescriptors.push_back(descriptor); }

void RuntimeWakeOff(int descriptor) { std::erase(wakeDescriptors, descriptor); }

const std::vector<int>& RuntimeWakeDescriptors() { return wakeDescriptors; }

}  // namespace zelto
