#pragma once

#include <functional>

namespace zelto {

// Calls the function, which starts Qt. If no display can be opened, the process ends with status 1
// and one line on standard error. Other messages of Qt are printed when the function returns.
void CollectStartMessages(const std::function<void()>& start);

}  // namespace zelto
