#pragma once

namespace zelto {

// Keeps apart what several running utilities do with the content record, since all extract it to
// one path. Blocks until the others are done, at most some seconds: then it goes on without the
// lock, since anybody can hold it. It also goes on where the file system has no locks.
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
