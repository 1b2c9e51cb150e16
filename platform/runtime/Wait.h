#pragma once

#include <thread>
#include <vector>

namespace zelto {

// Blocks until the descriptor is readable or the time, in milliseconds, is over; -1 stands for no
// descriptor and for no limit of time. Windows stay painted meanwhile and take no input.
void RuntimeAwait(int descriptor, int milliseconds);

// What RuntimeAwait does where there are windows to serve; with null it only waits.
using Waiter = void (*)(int descriptor, int milliseconds);
void RuntimeSetWaiter(Waiter waiter);

// Lets Application::DoEvents return as soon as the descriptor is readable, until it is taken back.
void RuntimeWakeOn(int descriptor);
void RuntimeWakeOff(int descriptor);
const std::vector<int>& RuntimeWakeDescriptors();

// The yield of a polling or scanning loop, once in each pass.
inline void RuntimeBackgroundTask() { std::this_thread::yield(); }

}  // namespace zelto
