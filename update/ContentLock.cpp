#include "update/ContentLock.h"

#include <fcntl.h>
#include <sys/file.h>

#include "exec/Shell.h"

namespace zelto {

// Locks /tmp, the folder of the record. Unlike a lock file, it always exists. The lock belongs to
// the open file, so the program `flock`, which can wait for a limited time, takes it for this
// process.
ContentLock::ContentLock() : mFolder(open("/tmp", O_RDONLY | O_DIRECTORY)) {
  if (!mFolder.IsOpen()) return;
  if (flock(mFolder.Number(), LOCK_EX | LOCK_NB) != 0) {
    RuntimeNewObject<Shell>()->Execute({"flock -w 5 " + std::to_string(mFolder.Number())});
  }
  fcntl(mFolder.Number(), F_SETFD, FD_CLOEXEC);
}

}  // namespace zelto
