#pragma once

#include <cstddef>

namespace zelto {

// Overwrites memory. The compiler cannot remove the call.
void Wipe(void* memory, std::size_t bytes);

// Disables core files of this process and of its children.
void DisableCoreDumps();

// Hides the memory of this process from other processes of the same user.
void HideMemory();

}  // namespace zelto
