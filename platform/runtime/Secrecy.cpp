#include "platform/runtime/Secrecy.h"

#include <sys/resource.h>

#include <algorithm>
#include <cstring>
#ifdef __linux__
#include <sys/prctl.h>
#endif

namespace zelto {

void Wipe(void* memory, std::size_t bytes) {
  std::memset(memory, 0, bytes);
  // The compiler must assume that the assembly reads the memory. It therefore keeps the stores.
  asm volatile("" : : "r"(memory) : "memory");
}

void DisableCoreDumps() {
  rlimit limit{};
  getrlimit(RLIMIT_CORE, &limit);
  // One byte also disables core dumps that are piped to a program. The hard limit stays, so a
  // command can raise its own limit.
  limit.rlim_cur = std::min<rlim_t>(1, limit.rlim_max);
  setrlimit(RLIMIT_CORE, &limit);
}

void HideMemory() {
#ifdef __linux__
  prctl(PR_SET_DUMPABLE, 0);
#endif
}

}  // namespace zelto
