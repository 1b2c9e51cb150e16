#include <unistd.h>

#include <cstdlib>

#include "tests/Fixtures.h"
#include "update/ContentLock.h"
#include "update/ContentRecord.h"
#include "update/POSIXPath.h"

using namespace zelto;

TEST(ContentLock, IsWaitedForInOrderButNotForever) {
  const auto isHeld = [] { return system("/usr/bin/flock -n /tmp true") != 0; };
  {
    const ContentLock lock;
    EXPECT_TRUE(isHeld());
  }
  EXPECT_FALSE(isHeld());
  const StubPrograms stubs;
  NewShell();
  // Another process has the lock and releases it after the program `flock` waits for it.
  const std::string held =
      "/usr/bin/flock /tmp sh -c 'touch $0/held; " + stubs.Blocker() + "' " + stubs.Path("");
  EXPECT_EQ(system(("(" + held + ") &").c_str()), 0);
  while (!std::filesystem::exists(stubs.Path("held"))) usleep(1000);
  stubs.Script("flock", "echo >'" + stubs.Path("gate") + "'; exec /usr/bin/flock \"$@\"");
  const ContentLock lock;
  EXPECT_TRUE(isHeld());
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
