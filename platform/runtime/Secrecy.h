#pragma once

#include <cstddef>

namespace zelto {

// Overwrites memory that held a secret, also where it is not read again.
void Wipe(void* memory, std::size_t bytes);

// From here on no core file of this process is written, and other processes of the same user
// cannot read its memory.
void DisableCoreDumps();

}  // namespace zelto
