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
  while (mShell->IsRunning()) RuntimeAwait(-1, 2);
  EXPECT_EQ(mShell->ErrorCode(), 4);
  EXPECT_EQ(Bytes(mShell->ReadAll()), std::string(9'999'999, '\0') + "one\ntwo\nthree\n");
}

TEST_F(ShellTest, ReturnsOutputBeforeErrorsWithoutPrompts) {
  mShell->Execute({"printf out; echo bad >&2"});
  mShell->Execute(CredentialCheck("wrong", "zt"));
  mShell->Execute(CredentialCheck("secret", "zt"));
  mShell->Execute({"echo out; echo 'the Password: is asked' >&2; printf last >&2"});
  EXPECT_EQ(Bytes(mShell->ReadAll()),
            "outout\nbad\nsu: Authentication failure\nthe Password: is asked\nlast\n");
  // A `sudo` that fails writes its message after its prompt. Only the prompt is removed.
  mStubs.Script("su", "read -r password; PATH=" + mStubs.Path("bin") + ":/bin; sh -c \"$3\"");
  mStubs.Script("sudo", "printf '%sno' \"$SUDO_PROMPT\" >&2; exit 1");
  const auto shell = NewShell();
  shell->Execute(CredentialCheck("secret", "zt"));
  EXPECT_EQ(Bytes(shell->ReadAll()), "no\n");
}

TEST_F(ShellTest, RecordIsReadWhateverSuPrints) {
  if (!RemoveRecord()) GTEST_SKIP() << "the record in /tmp belongs to another user";
  const std::string update = mStubs.Update("u.gz", GoodRecord);
  const std::string record = "/tmp/.KVX.Content\n" + GoodRecord;
  const std::string installed = "/tmp/.KVX.Content\n" + mStubs.Path("installed/member\n");
  const std::string same = "echo Your password expires soon.";
  const std::string different = "echo Call $(wc -c <" + mStubs.Path("su.calls") + ").";
  // What `su` prints before and after the command, and whether the front end is found.
  const std::tuple<std::string, std::string, bool> cases[] = {{":", ":", true},
                                                              {same, same, true},
                                                              {same + ";" + same, ":", true},
                                                              {different, different, true},
                                                              {same, ":", false},
                                                              {different, ":", false}};
  for (const auto& [before, after, isFound] : cases) {
    mStubs.Script("su", "read -r password; " + before + "; " +
                            (isFound ? "" : "PATH=" + mStubs.Path("bin") + ":/bin; ") +
                            "sh -c \"$3\"; status=$?; " + after + "; exit $status");
    const auto shell = NewShell();
    shell->Execute(CredentialCheck("secret", "zt"));
    shell->Execute(MemberExtract("secret", "zt", update));
    shell->Execute(MemberRead("secret", "zt", GoodRecord.size()));
    shell->Execute(FullExtract("secret", "zt", update));
    const std::string text = Bytes(shell->ReadAll());
    EXPECT_TRUE(text.starts_with(record)) << before << text;
    EXPECT_TRUE(text.ends_with(installed)) << before << text;
    EXPECT_TRUE(text == record + installed || (!isFound && before == different)) << before << text;
  }
  RemoveRecord();
}

TEST_F(ShellTest, DoesNotWaitForAChildThatKeepsTheOutputOpen) {
  mShell->Execute({"{ " + mStubs.Blocker() + "; } &"});
  EXPECT_EQ(mShell->ErrorCode(), 0);
}

TEST_F(ShellTest, PassesOnlyTheDocumentedEnvironment) {
  setenv("TAR_OPTIONS", "--help", 1);
  signal(SIGINT, SIG_IGN);
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

TEST_F(ShellTest, MissingProgramIsReported) {
  const std::string update = mStubs.Update("u.tar.gz", GoodRecord);
  for (const std::string missing : {"sh", "su", "sudo", "tar"}) {
    const std::string folder = mStubs.Path("without-" + missing);
    std::filesystem::create_directory(folder);
    for (const std::string name : {"sh", "su", "sudo", "tar", "cat", "printenv", "gzip"}) {
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

// No other process can find the password in `sh`, in `sudo`, or in the front end while its command
// runs.
TEST_F(ShellTest, HidesThePasswordFromOtherProcesses) {
  const std::string look =
      "tr '\\0' '\\n' </proc/$each/cmdline; tr '\\0' '\\n' </proc/$each/environ";
  mStubs.Script("su", "for each in $PPID; do " + look + "; done; sh -c \"$3\"");
  mStubs.Script("sudo",
                "read -r line; [ $line = secret ] || exit 1\n"
                "for each in $PPID $$; do " +
                    look + "; done");
  mShell->Execute(FullExtract("secret", "zt", "/missing"));
  const std::string text = Bytes(mShell->ReadAll());
  EXPECT_EQ(mShell->ErrorCode(), 0);
  EXPECT_NE(text.find("/front/sudo\n-S\ntar\n"), std::string::npos) << text;
  EXPECT_EQ(text.find("secret"), std::string::npos) << text;
}
