#include "platform/runtime/Secrecy.h"

#include <sys/resource.h>

#include <cstring>
#ifdef __linux__
#include <sys/prctl.h>
#endif

namespace zelto {

void Wipe(void* memory, std::size_t bytes) {
  std::memset(memory, 0, bytes);
  // The assembly may read the memory, so the compiler cannot remove the stores as dead.
  asm volatile("" : : "r"(memory) : "memory");
}

void DisableCoreDumps() {
  rlimit limit{};
  getrlimit(RLIMIT_CORE, &limit);
  limit.rlim_cur = 0;  // the hard limit is unchanged: a command can raise its own
  setrlimit(RLIMIT_CORE, &limit);
#ifdef __linux__
  prctl(PR_SET_DUMPABLE, 0);  // also disables core dumps that are piped to a program
#endif
}

}  // namespace zelto
