#pragma once

namespace zelto {

// Lets only one running instance of the utility use the content record at a time, because all
// instances extract the record to the same path. The constructor blocks for at most five seconds
// and then continues without the lock. Otherwise any account could take the lock and block all
// others. The constructor also continues if the file system does not support locks.
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
