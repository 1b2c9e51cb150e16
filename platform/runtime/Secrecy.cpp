#include "platform/runtime/Secrecy.h"

#include <sys/resource.h>

#include <cstring>
#ifdef __linux__
#include <sys/prctl.h>
#endif

namespace zelto {

void Wipe(void* memory, std::size_t bytes) {
  std::memset(memory, 0, bytes);
  // Somebody may read it here, for all the compiler knows; else it drops stores to memory that is
  // about to go.
  asm volatile("" : : "r"(memory) : "memory");
}

void DisableCoreDumps() {
  rlimit limit{};
  getrlimit(RLIMIT_CORE, &limit);
  limit.rlim_cur = 0;  // commands may raise theirs again
  setrlimit(RLIMIT_CORE, &limit);
#ifdef __linux__
  prctl(PR_SET_DUMPABLE, 0);  // also where cores go to a program and not to a file
#endif
}

}  // namespace zelto
