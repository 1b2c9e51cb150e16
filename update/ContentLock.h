#pragma once

namespace zelto {

// Serialises the use of the content record between running utilities, which all extract it to one
// path. The constructor blocks for at most five seconds and then continues without the lock,
// because every account can hold it. It also continues if the file system does not support locks.
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
