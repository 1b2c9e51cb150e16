#include <unistd.h>

#include "platform/Files.h"
#include "tests/Fixtures.h"

using namespace zelto;
using namespace std::string_literals;
using testing::StartsWith;

namespace {

class UpdateTest : public RecordTest {
 protected:
  // Presses the button of the dialog that the action shows. Returns the texts of the dialog, which
  // must belong to the main window, and records what the main window shows behind it.
  std::string Answer(const std::string& button, const std::function<void()>& action) {
    std::string labels;
    WhenModal([&](QWidget& dialog) {
      EXPECT_EQ(dialog.windowModality(), Qt::WindowModal);
      mBehind = Shown();
      WhenModalPress(button, &labels);
    });
    action();
    return labels;
  }
  std::string Install(const std::string& button) {
    return Answer(button, [this] { Press(mWindow->pbUpdate()); });
  }
  // Makes `tar` wait for Release, and calls the action meanwhile.
  void WhenTarWaits(const std::function<void()>& action) {
    mStubs.Script("tar", mStubs.Blocker() + "; exec /bin/tar \"$@\"");
    Once([this] { return !mStubs.Calls("tar").empty(); },
         [=] {
           EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::BusyCursor);
           action();
         });
  }
  bool IsInstalled() { return std::filesystem::exists(mStubs.Path("installed/member")); }
  std::string Shown() {
    return Bytes(mWindow->EditField1()->Text() + "|" + mWindow->stProduct()->Text() + "|" +
                 mWindow->stVersion()->Text() + "|" + mWindow->EditField2()->Text() + "|" +
                 mWindow->stStatus()->Text() + "|" +
                 (mWindow->pbUpdate()->Enabled() ? "on" : "off") + "|" +
                 (mWindow->pbTest()->Enabled() ? "on" : "off"));
  }

  std::string mBehind;
  std::string mGood = mStubs.Update("good one.tar.Gz", GoodRecord);
};

const std::string GoodLine = "|Zelto Core|4.2.1|Fixes the frobnicator.|";
}  // namespace

TEST_F(UpdateTest, ValidFileShowsItsMetadataAndEnablesTheButtons) {
  Choose(mStubs.Path("not yet.tar.g"));
  EXPECT_EQ(mStubs.Calls("su").size(), 0U);
  const auto dropped = RuntimeNewObject<DragItem>();
  dropped->FolderItem(FolderItem::At(mGood));
  InvokeHandler([&] { mWindow->EditField1_DropObject(dropped, 0); });
  EXPECT_EQ(Shown(), mGood + GoodLine + "Ready|on|on");
  EXPECT_EQ(Bytes(Globals::thePatchName), mGood);
  EXPECT_EQ(mStubs.Calls("su").size(), 3U);  // the first verifies the password
  Choose(mGood + "x");
  EXPECT_EQ(Shown(), mGood + "x" + GoodLine + "Ready|on|on");
  Choose("");
  EXPECT_EQ(Shown(), GoodLine + "Ready|off|off");
  EXPECT_EQ(Read("/tmp/.KVX.Content"), GoodRecord);
  const std::string withoutDot = mStubs.Update("notdotgz", GoodRecord);
  Choose(withoutDot);
  EXPECT_EQ(Shown(), withoutDot + GoodLine + "Ready|on|on");
}

TEST_F(UpdateTest, InvalidFileOffersKeepAndCancel) {
  std::filesystem::create_symlink("gate", mStubs.Path("pipe.gz"));  // `tar` would wait for ever
  Choose(mGood);
  for (const auto& path : {mStubs.Path("missing.gz"), mStubs.Path("pipe.gz")}) {
    EXPECT_EQ(
        Answer("Cancel", [&] { Choose(path); }),
        "Invalid Update File|"
        "This does not appear to be a properly configured ZELTO Group update file.\n\n"
        "Unless you know what the results of a blind tar extraction of the file dropped will "
        "do, we recommend that you re-download the patch file from the ZELTO Group website or "
        "contact our technical support team for further assistance.\n\n"
        "If you want to try to install this file anyway, click the Keep button|");
    EXPECT_THAT(mBehind, StartsWith(path + GoodLine + "Ready"));
    EXPECT_EQ(Shown(), GoodLine + "Ready|off|off");
  }
  Answer("Keep", [this] { Choose(mStubs.Path("missing.gz")); });
  EXPECT_EQ(Shown(), mStubs.Path("missing.gz") + GoodLine + "Ready|on|on");
}

TEST_F(UpdateTest, CheckIgnoresTheStatusOfTheCredentialCheck) {
  mStubs.Script("sudo", "shift; [ $1 = /usr/bin/true ] && exit 1; exec \"$@\"");
  Choose(mGood);
  EXPECT_EQ(Shown(), mGood + GoodLine + "Ready|on|on");
}

TEST_F(UpdateTest, InstallReportsSuccessAndClearsTheFields) {
  Choose(mGood);
  std::string during;
  WhenTarWaits([&] {
    during = Bytes(mWindow->stStatus()->Text());
    mStubs.Release();
  });
  EXPECT_EQ(Install("Install Another"),
            "Update Completed Successfullly|The update was applied successfully\n\nWould "
            "you like to apply another patch file or quit?|");
  EXPECT_EQ(during, "Installing Update...");
  EXPECT_EQ(mBehind, mGood + GoodLine + "Update completed successfully|on|on");
  EXPECT_EQ(Shown(), "||||Update completed successfully|off|off");
  EXPECT_TRUE(IsInstalled());
  const auto calls = mStubs.Calls("sudo");
  EXPECT_EQ(calls.at(calls.size() - 3), std::vector<std::string>{"-K"});
  EXPECT_EQ(calls.back(), (std::vector<std::string>{"-S", "tar", "-zxPvf", mGood}));
}

TEST_F(UpdateTest, ALongWaitShowsProgressAndUnavailableButtons) {
  auto& button = ControlWidget<QAbstractButton>(*mTop, "BevelButton1");
  const auto look = [&] { return button.grab().toImage(); };
  const auto isActive = [this] {
    const auto* progress = mTop->findChild<QProgressBar*>();
    return progress && progress->isVisible();
  };
  const QImage available = look();
  mStubs.Script("tar", "sleep 0.5; exec /bin/tar \"$@\"");
  for (const auto& wait : {std::function([&] { Choose(mGood); }),
                           std::function([&] { Install("Install Another"); })}) {
    QElapsedTimer timer;
    timer.start();
    Once(isActive, [&] {
      EXPECT_GE(timer.elapsed(), 300);
      EXPECT_NE(look(), available);
      EXPECT_TRUE(button.isEnabled());
    });
    wait();
    EXPECT_FALSE(isActive());
    EXPECT_EQ(look(), available);
  }
}

TEST_F(UpdateTest, QuitInTheSuccessDialogEndsTheProgram) {
  Choose(mGood);
  Install("Quit");
  EXPECT_THROW(ThrowIfQuitting(), EndException);
  EXPECT_EQ(Shown(), mGood + GoodLine + "Update completed successfully|on|on");
  EXPECT_EQ(State().ExitStatus, 0);
}

TEST_F(UpdateTest, CheckAndInstallLockTheRecord) {
  const std::string log = "flock -n /tmp true || echo locked >>" + mStubs.Path("locks");
  mStubs.Script("tar", log + "; exec /bin/tar \"$@\"");
  mStubs.Script("cat", "[ $# = 0 ] || " + log + "; exec /bin/cat \"$@\"");
  Choose(mGood);
  Install("Install Another");
  EXPECT_EQ(Read(mStubs.Path("locks")), "locked\nlocked\nlocked\n");
  EXPECT_EQ(system("flock -n /tmp true"), 0);
}

TEST_F(UpdateTest, FailedInstallShowsTheOutputAndCanBeRepeated) {
  Choose(mGood);
  mStubs.Script("tar", "echo /a/member; echo 'tar: no room' >&2; exit 2");
  EXPECT_EQ(Install("OK"), "Bad update file|Errors were reported when testing the file " + mGood +
                               "\n\n/a/member\ntar: no room\n|");
  EXPECT_EQ(mBehind, mGood + GoodLine + "Update File Read Error|on|on");
  mStubs.Script("tar", "exec /bin/tar \"$@\"");
  Install("Install Another");
  EXPECT_TRUE(IsInstalled());
}

TEST_F(UpdateTest, SecondCloseEndsTheProgramAndTheCommandFinishes) {
  Choose(mGood);
  WhenTarWaits([this] {
    mTop->close();
    EXPECT_TRUE(mTop->isVisible());
    EXPECT_EQ(ControlWidget(*mTop, "stStatus").accessibleDescription(),
              "Installing. Close again to leave; the installation continues.");
    mTop->close();
    EXPECT_FALSE(mTop->isVisible());
  });
  InvokeHandler([&] {
    mWindow->pbUpdate()->Raise("Action");
    ADD_FAILURE() << "the handler went on after the close";
  });
  EXPECT_FALSE(IsInstalled());
  mStubs.Release();
  Until([this] { return IsInstalled(); });
}

TEST_F(UpdateTest, TestButtonRunsTarWithoutSudo) {
  const std::string plain = mStubs.Update("plain.gz", GoodRecord);
  Choose(plain);
  const auto before = mStubs.Calls("su").size();
  WhenTarWaits([this] { mStubs.Release(); });
  bool isClearedBefore = false;
  const OnEvent clearing(
      *mTop->findChild<QPlainTextEdit*>()->viewport(), QEvent::Paint, [&](QObject&) {
        isClearedBefore |= !HandlerWaits() && mWindow->EditField2()->Text().IsNil();
      });
  String painted;
  const OnEvent painting(*mTop, QEvent::Paint,
                         [&](QObject&) { painted = mWindow->stStatus()->Text(); });
  Press(mWindow->pbTest());
  EXPECT_TRUE(isClearedBefore);
  EXPECT_EQ(Bytes(painted), "Update File Is Valid");
  EXPECT_EQ(Shown(), plain + "|Zelto Core|4.2.1||Update File Is Valid|on|on");
  EXPECT_EQ(mStubs.Calls("su").size(), before);
}

TEST_F(UpdateTest, TestButtonSplitsAPathAtItsBlanks) {
  Choose(mGood);
  EXPECT_THAT(Answer("OK", [this] { Press(mWindow->pbTest()); }),
              StartsWith("Bad update file|Errors were reported when testing the file " + mGood));
  EXPECT_EQ(mBehind, "|Zelto Core|4.2.1||Update File Read Error|off|off");
}

TEST_F(UpdateTest, OpenDialogFiltersInEitherCaseAndChecksTheChosenFile) {
  AnswerFileDialog(mGood, QDialog::Accepted, [](const QFileDialog& dialog) {
    EXPECT_EQ(dialog.nameFilters().at(0),
              "gzip compressed tar file (*.[tT][gG][zZ] *.[tT][aA][rR].[gG][zZ])");
    EXPECT_FALSE(dialog.testOption(QFileDialog::DontUseNativeDialog));
  });
  Press(mWindow->BevelButton1());
  EXPECT_EQ(Shown(), mGood + GoodLine + "Ready|on|on");
  EXPECT_TRUE(Globals::thePatchName.IsNil());
}

TEST_F(UpdateTest, CancelledOrUnreadableChoiceShowsAnErrorAndClearsTheFields) {
  for (const auto result : {QDialog::Rejected, QDialog::Accepted}) {
    if (result == QDialog::Accepted && getuid() == 0) GTEST_SKIP() << "root can read every file";
    Choose(mGood);
    if (result == QDialog::Accepted)
      std::filesystem::permissions(mGood, std::filesystem::perms::none);
    AnswerFileDialog(mGood, result);
    EXPECT_EQ(Answer("OK", [this] { Press(mWindow->BevelButton1()); }),
              "Unable to access file.|I am unable to open the file selected for reading.|");
    EXPECT_EQ(mBehind, "|Zelto Core|4.2.1||Ready|off|off");
    EXPECT_FALSE(std::filesystem::exists(getenv("XDG_CONFIG_HOME") + "/QtProject.conf"s));
  }
}
