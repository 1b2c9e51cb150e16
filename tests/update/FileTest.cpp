#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <deque>

#include "core/FileTypes1.h"
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
  for (const int error : {ENOLCK, EBADF, ENOSYS, EINVAL}) {
    lockErrors = {error};
    const ContentLock lock;
    EXPECT_FALSE(isHeld());
  }
}

TEST(FileType, FilterContainsOnlyRegisteredTypes) {
  const ApplicationFixture application;
  const auto& type = FileTypes1::gzipTarFile();
  EXPECT_EQ(Bytes(*type), "gzip compressed tar file");
  for (const char* const name : {"a.tgz", "a.tar.gz", "A.TAR.GZ", ".tgz"}) {
    EXPECT_TRUE(MatchesFilter(name, *type)) << name;
  }
  for (const char* const name : {"a.gz", "tgz", "a.tgz.x", ""}) {
    EXPECT_FALSE(MatchesFilter(name, *type)) << name;
  }
  EXPECT_EQ(FilterExtensions(*type).size(), 2U);  // a second conversion does not register it again
  type->Extensions("tgz;tar.gz");
  EXPECT_FALSE(MatchesFilter("a.tgz", "gzip compressed tar file"));
  EXPECT_TRUE(MatchesFilter("a.tgz", type + String("other")));
  FileTypes1::Finalize();
  EXPECT_FALSE(MatchesFilter("a.tgz", "gzip compressed tar file"));
}

TEST(POSIXPath, IsAbsoluteForExistingAndMissingItems) {
  const StubPrograms folder;
  const ApplicationFixture application;
  EXPECT_TRUE(File::POSIXPath(nullptr).IsNil());
  const auto item = FolderItem::At(folder.Path("bin"));
  EXPECT_EQ(Bytes(File::POSIXPath(item)), folder.Path("bin"));
  EXPECT_EQ(Bytes(UnixpathMBS(item)), folder.Path("bin"));
  EXPECT_EQ(Bytes(File::POSIXPath(item->Parent()->Child("no/ä"))), folder.Path("no/ä"));
  EXPECT_FALSE(FolderItem::At("/")->Parent());
}

TEST(ContentRecord, IsReadByLineNumber) {
  const struct {
    const char* Text;
    const char* Product;
    const char* Version;
    const char* Description;
  } cases[] = {{"m\nproduct=P\nversion=1\ndescription=D\nx=y\n", "P", "1", "D"},
               {"m\nx=1=2\nnone\nd=<b>\n", "1", "", "<b>"},
               {"m\na=P\nb=1\n", "P", "1", ""},
               {"m\na=P\r\nb=1\r\nc=D\r\n", "P", "1", "D"},
               {"m\na=P\r\r\nb=\r\nc", "P\r", "", ""},
               {"m", "", "", ""},
               {"", "", "", ""}};
  for (const auto& each : cases) {
    const auto record = ReadContentRecord(each.Text);
    EXPECT_EQ(Bytes(record.Product), each.Product) << each.Text;
    EXPECT_EQ(Bytes(record.Version), each.Version) << each.Text;
    EXPECT_EQ(Bytes(record.Description), each.Description) << each.Text;
  }
}
