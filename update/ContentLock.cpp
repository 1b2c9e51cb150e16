#include "update/ContentLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

#include "platform/runtime/Wait.h"

namespace zelto {

// Locks /tmp, the folder of the record. Unlike a lock file, it always exists.
ContentLock::ContentLock() : mFolder(open("/tmp", O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
  constexpr int pause = 20;   // milliseconds
  constexpr int tries = 250;  // five seconds
  for (int i = 0; mFolder >= 0 && i < tries && flock(mFolder, LOCK_EX | LOCK_NB) != 0; ++i) {
    if (errno != EWOULDBLOCK && errno != EINTR) return;  // no locks on this file system
    RuntimeAwait(-1, pause);
  }
}

ContentLock::~ContentLock() {
  if (mFolder >= 0) close(mFolder);
}

}  // namespace zelto
