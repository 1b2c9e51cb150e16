#pragma once

namespace zelto {

// Keeps apart what several running utilities do with the content record, since all extract it to
// one path. Blocks until the others are done, at most some seconds: then it gives up, for anybody
// can hold this lock.
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
