#pragma once

#include "platform/runtime/Descriptor.h"

namespace zelto {

// Lets one running instance of the utility use the record at a time, in the order of their
// requests, so that they do not disturb one another. The constructor serves events while it waits,
// and continues without the lock after five seconds, because any account can take it and keep it,
// or if there is no lock. A check does not depend on the lock to show the right record.
class ContentLock {
 public:
  ContentLock();

 private:
  Descriptor mFolder;
};

}  // namespace zelto
