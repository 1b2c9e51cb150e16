#include "platform/runtime/Secrecy.h"

#include <sys/resource.h>

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
  limit.rlim_cur = 0;  // the hard limit stays, so a command can raise its own limit
  setrlimit(RLIMIT_CORE, &limit);
#ifdef __linux__
  prctl(PR_SET_DUMPABLE, 0);  // also disables core dumps that are piped to a program
#endif
}

}  // namespace zelto
