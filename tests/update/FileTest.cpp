#include <unistd.h>

#include "tests/Fixtures.h"
#include "update/ContentLock.h"
#include "update/POSIXPath.h"

using namespace zelto;

TEST(ContentLock, IsWaitedForInOrderButNotForever) {
  const StubPrograms stubs;
  NewShell();
  // Another process has the lock and releases it after the program `flock` waits for it.
  const std::string held =
      "/usr/bin/flock /tmp sh -c 'touch $0/held; " + stubs.Blocker() + "' " + stubs.Path("");
  EXPECT_EQ(system(("(" + held + ") &").c_str()), 0);
  while (!std::filesystem::exists(stubs.Path("held"))) usleep(1000);
  stubs.Script("flock", "echo >'" + stubs.Path("gate") + "'; exec /usr/bin/flock \"$@\"");
  const ContentLock lock;
  EXPECT_NE(system("/usr/bin/flock -n /tmp true"), 0);
  EXPECT_EQ(stubs.Calls("flock").size(), 1U);
  // The lock is not had within the time.
  stubs.Script("flock", "exec /usr/bin/flock -w 0.1 $3");
  const ContentLock second;
}

TEST(POSIXPath, IsAbsoluteForExistingAndMissingItems) {
  const StubPrograms folder;
  const ApplicationFixture application;
  EXPECT_TRUE(File::POSIXPath(nullptr).IsNil());
  const auto item = FolderItem::At(folder.Path("bin"));
  EXPECT_EQ(Bytes(File::POSIXPath(item)), folder.Path("bin"));
  EXPECT_EQ(Bytes(File::POSIXPath(item->Parent()->Child("no/ä"))), folder.Path("no/ä"));
  EXPECT_EQ(Bytes(File::POSIXPath(FolderItem::At("/no")->Child("ä"))), "/no/ä");
  EXPECT_EQ(Bytes(File::POSIXPath(FolderItem::At("/")->Child("no"))), "/no");
  EXPECT_FALSE(FolderItem::At("/")->Parent());
}
