#pragma once

#include <functional>

namespace zelto {

// Starts Qt. A failure to open a display ends the process with status 1 and one line on standard
// error, without a core dump. All other messages are printed after the start.
void CollectStartMessages(const std::function<void()>& start);

}  // namespace zelto
