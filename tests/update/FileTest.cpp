#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <deque>

#include "tests/Fixtures.h"
#include "update/ContentLock.h"
#include "update/ContentRecord.h"
#include "update/POSIXPath.h"

using namespace zelto;

namespace {

// The next calls of `flock` fail with these errors.
std::deque<int> lockErrors;

}  // namespace

extern "C" int flock(int descriptor, int operation) {
  if (lockErrors.empty()) return static_cast<int>(syscall(SYS_flock, descriptor, operation));
  errno = lockErrors.front();
  lockErrors.pop_front();
  return -1;
}

TEST(ContentLock, RetriesOnlyIfHeldOrInterrupted) {
  const auto isHeld = [] { return system("flock -n /tmp true") != 0; };
  {
    lockErrors = {EWOULDBLOCK, EINTR};
    const ContentLock lock;
    EXPECT_TRUE(isHeld());
  }
  lockErrors = {ENOLCK};
  const ContentLock lock;
  EXPECT_FALSE(isHeld());
}

TEST(POSIXPath, IsAbsoluteForExistingAndMissingItems) {
  const StubPrograms folder;
  const ApplicationFixture application;
  EXPECT_TRUE(File::POSIXPath(nullptr).IsNil());
  const auto item = FolderItem::At(folder.Path("bin"));
  EXPECT_EQ(Bytes(File::POSIXPath(item)), folder.Path("bin"));
  EXPECT_EQ(Bytes(File::POSIXPath(item->Parent()->Child("no/ä"))), folder.Path("no/ä"));
  EXPECT_FALSE(FolderItem::At("/")->Parent());
}

TEST(ContentRecord, IsReadByLineNumber) {
  const char* const cases[][4] = {{"m\nproduct=P\nversion=1\ndescription=D\nx=y\n", "P", "1", "D"},
                                  {"m\nx=1=2\nnone\nd=<b>\n", "1", "", "<b>"},
                                  {"m\na=P\nb=1\n", "P", "1", ""},
                                  {"m\na=P\r\nb=1\r\nc=D\r\n", "P", "1", "D"},
                                  {"m\na=P\r\r\nb=\r\nc", "P\r", "", ""}};
  for (const auto& [text, product, version, description] : cases) {
    const auto record = ReadContentRecord(text);
    EXPECT_EQ(Bytes(record.Product), product) << text;
    EXPECT_EQ(Bytes(record.Version), version) << text;
    EXPECT_EQ(Bytes(record.Description), description) << text;
  }
}
