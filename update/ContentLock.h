#pragma once

namespace zelto {

// Lets only one running instance of the utility use the content record at a time, because all
// instances extract the record to the same path. The constructor waits at most five seconds for the
// lock and then continues without it, because any account can take the lock and keep it. The
// constructor also continues if the file system does not support locks.
class ContentLock {
 public:
  ContentLock();
  ContentLock(const ContentLock&) = delete;
  ContentLock& operator=(const ContentLock&) = delete;
  ~ContentLock();

 private:
  int mFolder;
};

}  // namespace zelto
