#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include "tests/Programs.h"

using namespace zelto;

namespace {

class ShellTest : public testing::Test {
 protected:
  void AwaitEnd() {
    while (mShell->IsRunning()) std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }

  Programs mPrograms;
  Ref<Shell> mShell = NewShell();
};

}  // namespace

TEST_F(ShellTest, BlocksInMode0AndKeepsTheLastStatus) {
  mShell->Execute({"sleep 0.1; echo one; exit 3"});
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
  const auto start = std::chrono::steady_clock::now();
  mShell->Execute({"sleep 0.2; echo one; exit 1"});
  mShell->Execute({"echo two; exit 2"});
  mShell->Execute({"echo three; exit 4"});
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(150));
  EXPECT_TRUE(mShell->IsRunning());
  AwaitEnd();
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

TEST_F(ShellTest, NeverBlocksOnOutputNorOnAChildThatKeepsIt) {
  const std::string child = mPrograms.Path("child");
  mShell->Execute(
      {"head -c 3000000 /dev/zero; head -c 3000000 /dev/zero >&2; sleep 60 & echo $! >" + child});
  EXPECT_EQ(LenB(mShell->ReadAll()), 6000002);
  mShell->Execute({"kill $(cat " + child + ")"});
  EXPECT_EQ(mShell->ErrorCode(), 0);
}

TEST_F(ShellTest, RefusesWhatIsNoLineAndSaysWhy) {
  using namespace std::string_view_literals;
  for (const auto text : {"touch x\ntouch y"sv, "touch x\0y"sv}) {
    mShell->Execute({String(text)});
    EXPECT_EQ(mShell->ErrorCode(), 127);
  }
  EXPECT_NE(Bytes(mShell->ReadAll()).find("could not be started"), std::string::npos);
  mShell->Execute({"true"});
  EXPECT_EQ(mShell->ErrorCode(), 0);
  setenv("PATH", mPrograms.Path("nowhere").c_str(), 1);
  mShell->Execute({"true"});
  EXPECT_EQ(mShell->ErrorCode(), 127);
  EXPECT_NE(Bytes(mShell->ReadAll()).find("No such file"), std::string::npos);
}

TEST_F(ShellTest, GivesTheCommandNothingButWhatIsStated) {
  setenv("TAR_OPTIONS", "--help", 1);
  setenv("SHELLOPTS_X", "1", 1);
  signal(SIGINT, SIG_IGN);
  signal(SIGCHLD, SIG_IGN);
  mShell->Execute({"env; read x || echo empty; ps -o sid= -p $$; echo $$; kill -INT $$"});
  unsetenv("TAR_OPTIONS");
  const std::string text = Bytes(mShell->ReadAll());
  for (const char* const name : {"PATH=", "LC_ALL=C.UTF-8", "SUDO_ASKPASS=", "\nempty\n"}) {
    EXPECT_NE(text.find(name), std::string::npos) << name;
  }
  EXPECT_EQ(text.find("TAR_OPTIONS"), std::string::npos);
  EXPECT_EQ(text.find("SHELLOPTS_X"), std::string::npos);
  EXPECT_EQ(mShell->ErrorCode(), 128 + SIGINT);
  const auto lines = Split(text, "\n");
  const auto count = static_cast<Int32>(lines.size());
  const auto session = std::stoi(Bytes(ElementAt(lines, count - 3)));
  EXPECT_EQ(session, std::stoi(Bytes(ElementAt(lines, count - 2))));  // its own
  EXPECT_NE(session, getsid(0));
}

TEST_F(ShellTest, ShowsThePasswordToNobody) {
  mPrograms.Script("su",
                   "tr '\\0' '\\n' </proc/$PPID/cmdline; tr '\\0' '\\n' </proc/$PPID/environ");
  mShell->Execute(MemberRead("secret", "zt"));
  const std::string text = Bytes(mShell->ReadAll());
  EXPECT_NE(text.find("sh\n"), std::string::npos);
  EXPECT_EQ(text.find("secret"), std::string::npos) << text;
}

TEST_F(ShellTest, LeavesARunningCommandToFinish) {
  mShell->Mode(2);
  mShell->Execute({"sleep 0.3; echo done >" + mPrograms.Path("done")});
  mShell = nullptr;
  for (int i = 0; i < 500 && Read(mPrograms.Path("done")).empty(); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  EXPECT_EQ(Read(mPrograms.Path("done")), "done\n");
}
