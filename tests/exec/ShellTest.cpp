#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>

#include "platform/runtime/Wait.h"
#include "tests/StubPrograms.h"

using namespace zelto;

namespace {

class ShellTest : public testing::Test {
 protected:
  StubPrograms mStubs;
  Ref<Shell> mShell = NewShell();
};

}  // namespace

TEST_F(ShellTest, BlocksInMode0AndKeepsTheLastStatus) {
  mShell->Execute({"echo one; exit 3"});
  EXPECT_FALSE(mShell->IsRunning());
  EXPECT_EQ(mShell->ErrorCode(), 3);
  mShell->Mode(0);
  mShell->Execute({"echo two"});
  EXPECT_EQ(mShell->ErrorCode(), 0);
  mShell->Execute({"kill -9 $$"});
  EXPECT_EQ(mShell->ErrorCode(), 137);
  EXPECT_EQ(Bytes(mShell->ReadAll()), "one\ntwo\n");
}

TEST_F(ShellTest, QueuesInMode2FirstInFirstOut) {
  mShell->Mode(2);
  mShell->Execute({mStubs.Blocker() + "; echo one; exit 1"});
  mShell->Execute({"echo two; exit 2"});
  mShell->Execute({"echo three; exit 4"});
  EXPECT_TRUE(mShell->IsRunning());
  mStubs.Release();
  while (mShell->IsRunning()) RuntimeAwait(-1, 2);
  EXPECT_EQ(mShell->ErrorCode(), 4);
  EXPECT_EQ(Bytes(mShell->ReadAll()), "one\ntwo\nthree\n");
}

TEST_F(ShellTest, GathersOutputBeforeErrorsWithoutTheQuestions) {
  mShell->Execute({"printf out; echo bad >&2"});
  mShell->Execute(CredentialCheck("wrong", "zt"));
  mShell->Execute(CredentialCheck("secret", "zt"));
  mShell->Execute({"echo out; echo 'the Password: is asked' >&2; printf last >&2"});
  EXPECT_EQ(Bytes(mShell->ReadAll()),
            "outout\nbad\nsu: Authentication failure\nthe Password: is asked\nlast\n");
}

TEST_F(ShellTest, NeverBlocksOnAChildThatKeepsTheOutput) {
  mShell->Execute({"{ " + mStubs.Blocker() + "; } &"});
  EXPECT_EQ(mShell->ErrorCode(), 0);
}

TEST_F(ShellTest, GivesTheCommandNothingButWhatIsStated) {
  setenv("TAR_OPTIONS", "--help", 1);
  signal(SIGINT, SIG_IGN);
  signal(SIGCHLD, SIG_IGN);
  mShell->Execute(
      {"env; read x || echo empty; [ $(ps -o sid= -p $$) = $$ ] && echo apart; "
       "kill -INT $$"});
  const std::string text = Bytes(mShell->ReadAll());
  for (const char* const part :
       {"PATH=", "LC_ALL=C.UTF-8", "SUDO_ASKPASS=", "\nempty\n", "\napart\n"}) {
    EXPECT_NE(text.find(part), std::string::npos) << part;
  }
  EXPECT_EQ(text.find("TAR_OPTIONS"), std::string::npos);
  unsetenv("TAR_OPTIONS");
  EXPECT_EQ(mShell->ErrorCode(), 128 + SIGINT);
}

TEST_F(ShellTest, ShowsThePasswordToNobody) {
  mStubs.Script("su", "tr '\\0' '\\n' </proc/$PPID/cmdline; tr '\\0' '\\n' </proc/$PPID/environ");
  mShell->Execute(MemberRead("secret", "zt"));
  const std::string text = Bytes(mShell->ReadAll());
  EXPECT_NE(text.find("sh\n"), std::string::npos);
  EXPECT_EQ(text.find("secret"), std::string::npos) << text;
}
