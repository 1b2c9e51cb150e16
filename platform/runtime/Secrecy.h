#pragma once

#include <cstddef>

namespace zelto {

// Overwrites memory. The compiler cannot remove the call.
void Wipe(void* memory, std::size_t bytes);

// Disables core files of this process and hides its memory from other processes of the same user.
void DisableCoreDumps();

}  // namespace zelto
