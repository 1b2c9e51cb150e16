#include <signal.h>
#include <stdlib.h>

#include "platform/runtime/Wait.h"
#include "tests/StubPrograms.h"

using namespace zelto;
using testing::AllOf, testing::HasSubstr, testing::Not;

namespace {

class ShellTest : public testing::Test {
 protected:
  StubPrograms mStubs;
  Ref<Shell> mShell = NewShell();
};

}  // namespace

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

// PAM can replace PATH in `su`.
TEST_F(ShellTest, WrapperIsFoundByShellsWithAStartFileOrTheCheckFails) {
  const std::string refusal = ".*its login shell does not find it.*\n";
  for (const auto& [login, status] : {std::pair("bash", 0), {"zsh", 0}, {"dash", 126}}) {
    if (system((std::string("command -v >/dev/null ") + login).c_str()) != 0) continue;
    mStubs.Script("su", "read -r password; PATH=" + mStubs.Path("bin") + ":/bin:/usr/bin; exec " +
                            login + " -c \"$3\"");
    const auto shell = NewShell();
    shell->Execute(CredentialCheck("secret", "zt"));
    EXPECT_EQ(shell->ErrorCode(), status) << login;
    EXPECT_THAT(Bytes(shell->ReadAll()), testing::MatchesRegex(status == 0 ? "" : refusal));
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
      EXPECT_THAT(Bytes(shell->ReadAll()), AllOf(HasSubstr("late"), Not(HasSubstr("secret"))));
    }
  }
}

TEST_F(ShellTest, PassesOnlyTheDocumentedEnvironment) {
  setenv("TAR_OPTIONS", "--help", 1);
  signal(SIGINT, SIG_IGN);
  mShell->Execute(
      {"env; read x || echo empty; [ $(ps -o sid= -p $$) = $$ ] && echo apart; "
       "kill -INT $$"});
  EXPECT_THAT(Bytes(mShell->ReadAll()),
              AllOf(HasSubstr("PATH="), HasSubstr("LC_ALL=C.UTF-8"), HasSubstr("BASH_ENV="),
                    HasSubstr("\nempty\napart\n"), Not(HasSubstr("TAR_OPTIONS"))));
  EXPECT_EQ(mShell->ErrorCode(), 128 + SIGINT);
  unsetenv("TAR_OPTIONS");
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
  EXPECT_THAT(Read(mStubs.Path("seen")),
              AllOf(HasSubstr("zelto-update-utility/sudo\n-S\ntar\n"), Not(HasSubstr("secret"))));
}

TEST_F(ShellTest, WrapperSetsTheMaskAndTheLocaleAndKeepsThePasswordOffTheDisk) {
  // With BASH_COMPAT, bash keeps here-documents in files, as it did before version 5.1.
  mStubs.Script(
      "su", "read -r password; umask 077; export LC_ALL=POSIX LANGUAGE=de BASH_COMPAT=5.0 TMPDIR=" +
                mStubs.Path("bin") +
                "; bash -c \"sudo() { bash ${PATH%%:*}/sudo \\\"\\$@\\\"; }; $3\"");
  mStubs.Script("sudo", "umask; echo $LC_ALL:$LANGUAGE; readlink /proc/self/fd/0");
  mShell->Execute(FullExtract("secret", "zt", "/missing"));
  EXPECT_THAT(Bytes(mShell->ReadAll()), testing::StartsWith("0022\nC.UTF-8:\n/dev/shm/"));
}
