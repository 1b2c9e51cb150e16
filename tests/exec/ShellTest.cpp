#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>

#include <tuple>

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
  mShell->Execute({mStubs.Blocker() + "; head -c 9999999 /dev/zero; echo one; exit 1"});
  mShell->Execute({"echo two; exit 2"});
  mShell->Execute({"echo three; exit 4"});
  EXPECT_TRUE(mShell->IsRunning());
  mStubs.Release();
  while (mShell->IsRunning()) mShell->Poll();
  EXPECT_EQ(mShell->ErrorCode(), 4);
  EXPECT_EQ(Bytes(mShell->ReadAll()), std::string(9'999'999, '\0') + "one\ntwo\nthree\n");
}

TEST_F(ShellTest, ReturnsErrorsAfterAllOutputAndOnlyOfAFailure) {
  mShell->Execute({"printf out; echo bad >&2"});
  EXPECT_EQ(Bytes(mShell->ReadAll()), "out\n");
  mShell->Execute(CredentialCheck("wrong", "zt"));
  mShell->Execute(CredentialCheck("secret", "zt"));
  mShell->Execute({"echo out; printf last >&2; exit 1"});
  EXPECT_EQ(Bytes(mShell->ReadAll()), "outout\nbad\nsu: Authentication failure\nlast\n");
}

TEST_F(ShellTest, RecordIsReadWhateverSuPrints) {
  if (!RemoveRecord()) GTEST_SKIP() << "the record in /tmp belongs to another user";
  const std::string update = mStubs.Update("u.gz", GoodRecord);
  const std::string expected = "/tmp/.KVX.Content\n" + GoodRecord + "/tmp/.KVX.Content\n" +
                               mStubs.Path("installed/member\n");
  const std::string message = "echo Your password expires soon.";
  const std::string count = "echo Call $(wc -c <" + mStubs.Path("su.calls") + ").";
  for (const auto& [before, after] : {std::pair(message, message), std::pair(count, count)}) {
    mStubs.Script("su", "read -r password; " + before + "; sh -c \"$3\"; status=$?; " + after +
                            "; exit $status");
    const auto shell = NewShell();
    shell->Execute(CredentialCheck("secret", "zt"));
    shell->Execute(MemberExtract("secret", "zt", update));
    const auto identity = shell->RecordIdentity();
    shell->Execute(MemberRead("secret", "zt"));
    EXPECT_FALSE(identity.IsNil());
    EXPECT_TRUE(shell->RecordIdentity() == identity);
    shell->Execute(FullExtract("secret", "zt", update));
    EXPECT_EQ(Bytes(shell->ReadAll()), expected);
  }
  RemoveRecord();
}

// PAM can replace PATH in `su`.
TEST_F(ShellTest, WrapperIsFoundByShellsWithAStartFileOrTheCheckFails) {
  for (const std::string login : {"bash", "zsh", "dash"}) {
    if (system(("command -v " + login + " >/dev/null").c_str()) != 0) continue;
    mStubs.Script("su", "read -r password; PATH=" + mStubs.Path("bin") + ":/bin:/usr/bin; exec " +
                            login + " -c \"$3\"");
    const auto shell = NewShell();
    shell->Execute(CredentialCheck("secret", "zt"));
    EXPECT_EQ(shell->ErrorCode(), login == "dash" ? 126 : 0) << login;
    EXPECT_EQ(Bytes(shell->ReadAll()),
              login == "dash" ? "The account cannot use the utility's wrapper for sudo: its login "
                                "shell does not find it. Install the package, or use an account "
                                "whose login shell is bash or zsh.\n"
                              : "");
  }
}

// Whatever is killed, no text contains the password, and the command lasts as long as its output.
TEST_F(ShellTest, KilledCommandEndsWithItsLastProcessAndWithoutThePassword) {
  for (const std::string login : {"bash", "sh"}) {
    for (const std::string child : {"$$", "$(ps -o ppid= -p $$)"}) {  // the victim is its parent
      const StubPrograms stubs;
      stubs.Script("su", "read -r password; " + login + " -c \"$3\"; exit $?");
      stubs.Script("sudo", "kill -9 $(ps -o ppid= -p " + child + "); touch " +
                               stubs.Path("killed") + "; " + stubs.Blocker() + "; echo late");
      const auto shell = NewShell();
      shell->Mode(2);
      shell->Execute(CredentialCheck("it's secret", "zt"));
      while (!std::filesystem::exists(stubs.Path("killed"))) RuntimeAwait(-1, 5);
      RuntimeAwait(-1, 100);  // the shells report the kill
      shell->Poll();
      EXPECT_TRUE(shell->IsRunning());
      stubs.Release();
      while (shell->IsRunning()) shell->Poll();
      EXPECT_NE(shell->ErrorCode(), 0);
      const std::string text = Bytes(shell->ReadAll());
      EXPECT_NE(text.find("late"), std::string::npos) << text;
      EXPECT_EQ(text.find("secret"), std::string::npos) << text;
    }
  }
}

TEST_F(ShellTest, PassesOnlyTheDocumentedEnvironment) {
  setenv("TAR_OPTIONS", "--help", 1);
  signal(SIGINT, SIG_IGN);
  mShell->Execute(
      {"env; read x || echo empty; [ $(ps -o sid= -p $$) = $$ ] && echo apart; "
       "kill -INT $$"});
  const std::string text = Bytes(mShell->ReadAll());
  for (const char* const part :
       {"PATH=", "LC_ALL=C.UTF-8", "BASH_ENV=", "\nempty\n", "\napart\n"}) {
    EXPECT_NE(text.find(part), std::string::npos) << part;
  }
  EXPECT_EQ(text.find("TAR_OPTIONS"), std::string::npos);
  unsetenv("TAR_OPTIONS");
  EXPECT_EQ(mShell->ErrorCode(), 128 + SIGINT);
}

TEST_F(ShellTest, MissingProgramIsReported) {
  const std::string update = mStubs.Update("u.tar.gz", GoodRecord);
  for (const std::string missing : {"sh", "su", "sudo", "tar"}) {
    const std::string folder = mStubs.Path("without-" + missing);
    std::filesystem::create_directory(folder);
    for (const std::string name : {"sh", "su", "sudo", "tar", "cat", "gzip"}) {
      const std::string from = name.starts_with("su") ? mStubs.Path("bin/") : "/bin/";
      if (name != missing) std::filesystem::create_symlink(from + name, folder + "/" + name);
    }
    setenv("PATH", folder.c_str(), 1);
    const auto shell = NewShell();
    shell->Execute(FullExtract("secret", "zt", update));
    EXPECT_NE(shell->ErrorCode(), 0) << missing;
    const std::string reason = missing == "sh" ? "No such file" : "not found";
    EXPECT_NE(Bytes(shell->ReadAll()).find(reason), std::string::npos) << missing;
  }
}

// No other process can find the password in `sh`, in `sudo`, or in the wrapper while its command
// runs.
TEST_F(ShellTest, HidesThePasswordFromOtherProcesses) {
  const std::string look =
      "do tr '\\0' '\\n' </proc/$each/cmdline; "
      "tr '\\0' '\\n' </proc/$each/environ; done >>" +
      mStubs.Path("seen");
  mStubs.Script("su", "for each in $PPID; " + look + "; sh -c \"$3\"");
  mStubs.Script("sudo",
                "read -r line; [ $line = secret ] || exit 1; for each in $PPID $$; " + look);
  mShell->Execute(FullExtract("secret", "zt", "/missing"));
  EXPECT_EQ(mShell->ErrorCode(), 0);
  const std::string seen = Read(mStubs.Path("seen"));
  EXPECT_NE(seen.find("zelto-update-utility/sudo\n-S\ntar\n"), std::string::npos) << seen;
  EXPECT_EQ(seen.find("secret"), std::string::npos) << seen;
}

TEST_F(ShellTest, WrapperSetsTheMaskAndTheLocaleAndKeepsThePasswordOffTheDisk) {
  // With BASH_COMPAT, bash keeps here-documents in files, as it did before version 5.1.
  mStubs.Script(
      "su", "read -r password; umask 077; export LC_ALL=POSIX LANGUAGE=de BASH_COMPAT=5.0 TMPDIR=" +
                mStubs.Path("bin") +
                "; bash -c \"sudo() { bash ${PATH%%:*}/sudo \\\"\\$@\\\"; }; $3\"");
  mStubs.Script("sudo", "umask; echo $LC_ALL:$LANGUAGE; readlink /proc/self/fd/0");
  mShell->Execute(FullExtract("secret", "zt", "/missing"));
  const std::string text = Bytes(mShell->ReadAll());
  EXPECT_TRUE(text.starts_with("0022\nC.UTF-8:\n")) << text;
  EXPECT_NE(text.find("/dev/shm/"), std::string::npos) << text;
}
