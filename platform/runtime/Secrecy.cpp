#include "platform/runtime/Secrecy.h"

#include <sys/resource.h>
#ifdef __linux__
#include <sys/prctl.h>
#endif

namespace zelto {

void Wipe(void* memory, std::size_t bytes) {
  // Volatile, or the compiler drops stores to memory that is about to go.
  volatile char* byte = static_cast<char*>(memory);
  for (; bytes > 0; --bytes) *byte++ = 0;
}

void GuardMemory() {
  rlimit limit{};
  getrlimit(RLIMIT_CORE, &limit);
  limit.rlim_cur = 0;  // commands may raise theirs again
  setrlimit(RLIMIT_CORE, &limit);
#ifdef __linux__
  prctl(PR_SET_DUMPABLE, 0);  // also where cores go to a program and not to a file
#endif
}

}  // namespace zelto
