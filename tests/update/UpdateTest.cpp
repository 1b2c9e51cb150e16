#include <unistd.h>

#include <QAbstractButton>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QGuiApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>

#include "platform/Files.h"
#include "platform/Framework.h"
#include "tests/Fixtures.h"

using namespace zelto;
using namespace std::string_literals;

namespace {

class UpdateTest : public RecordTest {
 protected:
  void Press(const Ref<RectControl>& button) {
    InvokeHandler([&] { button->Raise("Action"); });
  }
  // Presses Update, and then the button of the dialog. Returns the texts of the dialog.
  std::string Install(const std::string& button) {
    std::string labels;
    WhenWithinWindow([&] { WhenModalPress(button, &labels); });
    Press(mWindow->pbUpdate());
    return labels;
  }
  // Calls the action with the next dialog, which must belong to the main window. Records what the
  // main window shows behind it.
  void WhenWithinWindow(const std::function<void()>& action) {
    WhenModal([=, this](QWidget& dialog) {
      EXPECT_EQ(dialog.windowModality(), Qt::WindowModal);
      mBehind = Shown();
      action();
    });
  }
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

TEST_F(UpdateTest, RecordIsShownAsPlainText) {
  Choose(mStubs.Update("odd.gz", "a=caf\xE9\nb=<img>\nc=<i>No</i> &amp; \xC3\xA4\xC3\n"));
  const auto label = [&](const char* name) {
    return ControlWidget<QLabel>(*mTop, name).text().toStdString();
  };
  EXPECT_EQ(label("stProduct") + label("stVersion"), "caf\xEF\xBF\xBD<img>");
  EXPECT_EQ(mTop->findChild<QPlainTextEdit*>()->toPlainText().toStdString(),
            "<i>No</i> &amp; \xC3\xA4\xEF\xBF\xBD");
}

TEST_F(UpdateTest, InvalidFileOffersKeepAndCancel) {
  Write(mStubs.Path("no archive.gz"), "none");
  Write(mStubs.Path("cut.gz"), Read(mGood).substr(0, 100));
  std::filesystem::create_directory(mStubs.Path("folder.gz"));
  const std::string bad[] = {mStubs.Path("no archive.gz"),
                             mStubs.Path("cut.gz"),
                             mStubs.Path("folder.gz"),
                             mStubs.Path("missing.gz"),
                             mStubs.Update("other.gz", GoodRecord, "/tmp/.KVX.Other"),
                             mStubs.Update("noslash.gz", GoodRecord, "tmp/.KVX.Content")};
  Choose(mGood);
  for (const auto& path : bad) {
    std::string labels;
    WhenWithinWindow([&] { WhenModalPress("Cancel", &labels); });
    Choose(path);
    EXPECT_EQ(mBehind.find(path + GoodLine + "Ready"), 0U) << mBehind;
    EXPECT_EQ(
        labels,
        "Invalid Update File|"
        "This does not appear to be a properly configured ZELTO Group update file.\n\n"
        "Unless you know what the results of a blind tar extraction of the file dropped will "
        "do, we recommend that you re-download the patch file from the ZELTO Group website or "
        "contact our technical support team for further assistance.\n\n"
        "If you want to try to install this file anyway, click the Keep button|")
        << path;
    EXPECT_EQ(Shown(), GoodLine + "Ready|off|off") << path;
  }
  WhenWithinWindow([] { WhenModalPress("Keep"); });
  Choose(bad[0]);
  EXPECT_EQ(Shown(), bad[0] + GoodLine + "Ready|on|on");
}

TEST_F(UpdateTest, CheckIgnoresTheStatusOfTheCredentialCheck) {
  mStubs.Script("sudo", "shift; [ $1 = /usr/bin/true ] && exit 1; exec \"$@\"");
  Choose(mGood);
  EXPECT_EQ(Shown(), mGood + GoodLine + "Ready|on|on");
}

TEST_F(UpdateTest, InstallReportsSuccessAndClearsTheFields) {
  Choose(mGood);
  std::string during;
  mStubs.Script("tar", mStubs.Blocker() + "; exec /bin/tar \"$@\"");
  Once([&] { return mStubs.Calls("tar").size() == 1; },
       [&] {
         during = Bytes(mWindow->stStatus()->Text());
         EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::BusyCursor);
         mStubs.Release();
       });
  EXPECT_EQ(Install("Install Another"),
            "Update Completed Successfullly|The update was applied successfully\n\nWould "
            "you like to apply another patch file or quit?|");
  EXPECT_EQ(during, "Installing Update...");
  EXPECT_EQ(mBehind, mGood + GoodLine + "Update completed successfully|on|on");
  EXPECT_EQ(Shown(), "||||Update completed successfully|off|off");
  EXPECT_EQ(Read(mStubs.Path("installed/member")), "the member");
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
  EXPECT_EQ(Read(mStubs.Path("installed/member")), "the member");
}

TEST_F(UpdateTest, SecondCloseEndsTheProgramAndTheCommandFinishes) {
  Choose(mGood);
  mStubs.Script("tar", mStubs.Blocker() + "; touch " + mStubs.Path("finished"));
  Once([&] { return !mStubs.Calls("tar").empty(); },
       [&] {
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
  EXPECT_FALSE(std::filesystem::exists(mStubs.Path("finished")));
  mStubs.Release();
  Until([&] { return std::filesystem::exists(mStubs.Path("finished")); });
}

TEST_F(UpdateTest, TestButtonRunsTarWithoutSudo) {
  const std::string plain = mStubs.Update("plain.gz", GoodRecord);
  Choose(plain);
  const auto before = mStubs.Calls("su").size();
  mStubs.Script("tar", mStubs.Blocker() + "; exec /bin/tar \"$@\"");
  Once([&] { return mStubs.Calls("tar").size() == 1; },
       [&] {
         EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::BusyCursor);
         mStubs.Release();
       });
  bool isClearedBefore = false;
  const OnPaint clearing(*mTop->findChild<QPlainTextEdit*>()->viewport(), [&] {
    isClearedBefore = isClearedBefore || (!HandlerWaits() && mWindow->EditField2()->Text().IsNil());
  });
  String painted;
  const OnPaint painting(*mTop, [&] { painted = mWindow->stStatus()->Text(); });
  Press(mWindow->pbTest());
  EXPECT_TRUE(isClearedBefore);
  EXPECT_EQ(Bytes(painted), "Update File Is Valid");
  EXPECT_EQ(Shown(), plain + "|Zelto Core|4.2.1||Update File Is Valid|on|on");
  mStubs.Script("tar", "exec /bin/tar \"$@\"");
  EXPECT_EQ(mStubs.Calls("su").size(), before);
  const std::string without = mStubs.Update("none.gz", GoodRecord, "/tmp/.KVX.Other");
  for (const auto& bad : {mGood, without}) {  // the first has a blank in its name
    if (bad == without) WhenModalPress("Keep");
    Choose(bad);
    std::string labels;
    WhenWithinWindow([&] { WhenModalPress("OK", &labels); });
    Press(mWindow->pbTest());
    EXPECT_EQ(labels.find("Bad update file|Errors were reported when testing the file " + bad), 0U);
    EXPECT_EQ(mBehind, "|Zelto Core|4.2.1||Update File Read Error|off|off");
  }
}

TEST_F(UpdateTest, OpenDialogFiltersInEitherCaseAndChecksTheChosenFile) {
  WhenModal([&](QWidget& shown) {
    auto& dialog = dynamic_cast<QFileDialog&>(shown);
    EXPECT_EQ(dialog.nameFilters().at(0).toStdString(),
              "gzip compressed tar file (*.[tT][gG][zZ] *.[tT][aA][rR].[gG][zZ])");
    EXPECT_FALSE(dialog.testOption(QFileDialog::DontUseNativeDialog));
    dialog.selectFile(QString::fromStdString(mGood));
    dynamic_cast<QDialog&>(dialog).accept();
  });
  Press(mWindow->BevelButton1());
  EXPECT_EQ(Shown(), mGood + GoodLine + "Ready|on|on");
  EXPECT_TRUE(Globals::thePatchName.IsNil());
}

TEST_F(UpdateTest, CancelledOrUnreadableChoiceShowsAnErrorAndClearsTheFields) {
  for (const auto result : {QDialog::Rejected, QDialog::Accepted}) {
    if (result == QDialog::Accepted && getuid() == 0) GTEST_SKIP() << "root can read every file";
    Choose(mGood);
    std::string labels;
    WhenModal([&](QWidget& shown) {
      WhenWithinWindow([&] { WhenModalPress("OK", &labels); });
      if (result == QDialog::Accepted)
        std::filesystem::permissions(mGood, std::filesystem::perms::none);
      dynamic_cast<QFileDialog&>(shown).selectFile(QString::fromStdString(mGood));
      dynamic_cast<QDialog&>(shown).done(result);
    });
    Press(mWindow->BevelButton1());
    EXPECT_EQ(labels, "Unable to access file.|I am unable to open the file selected for reading.|");
    EXPECT_EQ(mBehind, "|Zelto Core|4.2.1||Ready|off|off");
    EXPECT_FALSE(std::filesystem::exists(getenv("XDG_CONFIG_HOME") + "/QtProject.conf"s));
  }
}
