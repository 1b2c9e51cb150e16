#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTimer>

#include "tests/Stage.h"

using namespace zelto;

namespace {

class UpdateTest : public WindowTest<> {
 protected:
  ~UpdateTest() override { std::filesystem::remove("/tmp/.KVX.Content"); }

  void Press(const Ref<RectControl>& button) {
    FromToolkit([&] { button->Raise("Action"); });
  }
  std::string Shown() {
    return Bytes(mWindow->EditField1()->Text() + "|" + mWindow->stProduct()->Text() + "|" +
                 mWindow->stVersion()->Text() + "|" + mWindow->EditField2()->Text() + "|" +
                 mWindow->stStatus()->Text() + "|" +
                 (mWindow->pbUpdate()->Enabled() ? "on" : "off") + "|" +
                 (mWindow->pbTest()->Enabled() ? "on" : "off"));
  }

  std::string mGood = mPrograms.Update("good one.tar.gz", GoodRecord);
};

const std::string GoodLine = "|Zelto Core|4.2.1|Fixes the frobnicator.|";
}  // namespace

TEST_F(UpdateTest, AGoodFileShowsWhatItSaysAndEnablesTheButtons) {
  Choose(mPrograms.Path("not yet.tar.g"));
  EXPECT_EQ(mPrograms.Calls("su").size(), 0U);
  Choose(mGood);
  EXPECT_EQ(Shown(), mGood + GoodLine + "Ready|on|on");
  Choose(mGood + "x");
  EXPECT_EQ(Shown(), mGood + "x" + GoodLine + "Ready|on|on");
  Choose("");
  EXPECT_EQ(Shown(), GoodLine + "Ready|off|off");
  EXPECT_EQ(Read("/tmp/.KVX.Content"), GoodRecord);
}

TEST_F(UpdateTest, ARecordIsShownAsItIs) {
  Choose(mPrograms.Update("odd.gz", "a=caf\xE9\nb=<img>\nc=<i>No</i> &amp; \xC3\xA4\xC3\n"));
  const auto label = [&](int left) {
    return dynamic_cast<QLabel&>(ControlWidget(*mTop, left, 103)).text().toStdString();
  };
  EXPECT_EQ(label(71) + label(317), "caf\xEF\xBF\xBD<img>");
  EXPECT_EQ(mTop->findChild<QPlainTextEdit*>()->toPlainText().toStdString(),
            "<i>No</i> &amp; \xC3\xA4\xEF\xBF\xBD");
}

TEST_F(UpdateTest, ABadFileAsksAndObeys) {
  Write(mPrograms.Path("no archive.gz"), "none");
  Write(mPrograms.Path("cut.gz"), Read(mGood).substr(0, 100));
  std::filesystem::create_directory(mPrograms.Path("folder.gz"));
  const std::string bad[] = {mPrograms.Path("no archive.gz"),
                             mPrograms.Path("cut.gz"),
                             mPrograms.Path("folder.gz"),
                             mPrograms.Path("missing.gz"),
                             mPrograms.Update("other.gz", GoodRecord, "/tmp/.KVX.Other"),
                             mPrograms.Update("noslash.gz", GoodRecord, "tmp/.KVX.Content")};
  Choose(mGood);
  for (const auto& path : bad) {
    std::string labels;
    WhenModalPress("Cancel", &labels);
    Choose(path);
    EXPECT_EQ(labels.find("Invalid Update File|"), 0U) << path;
    EXPECT_EQ(Shown(), GoodLine + "Ready|off|off") << path;
  }
  WhenModalPress("Keep");
  Choose(bad[0]);
  EXPECT_EQ(Shown(), bad[0] + GoodLine + "Ready|on|on");
}

TEST_F(UpdateTest, AFailedCredentialCheckAloneDoesNotDecide) {
  mPrograms.Script("sudo", "[ $1 = -S ] && exit 1; exec \"$@\"");
  Choose(mGood);
  EXPECT_EQ(Shown(), mGood + GoodLine + "Ready|on|on");
}

TEST_F(UpdateTest, InstallsTellsAndClears) {
  Choose(mGood);
  std::string labels;
  std::string during;
  mPrograms.Script("sudo", "case $1 in -K) exit;; -S) exit;; esac\nsleep 0.2; exec \"$@\"");
  WhenModalPress("Install Another", &labels);
  FromToolkit([&] {
    QTimer::singleShot(100, qApp, [&] { during = Bytes(mWindow->stStatus()->Text()); });
    mWindow->pbUpdate()->Raise("Action");
  });
  EXPECT_EQ(during, "Installing Update...");
  EXPECT_EQ(labels,
            "Update Completed Successfullly|The update was applied successfully\n\nWould "
            "you like to apply another patch file or quit?|");
  EXPECT_EQ(Shown(), "||||Update completed successfully|off|off");
  EXPECT_EQ(Read(mPrograms.Path("installed/member")), "the member");
  const auto calls = mPrograms.Calls("sudo");
  EXPECT_EQ(calls.at(calls.size() - 3), std::vector<std::string>{"-K"});
  EXPECT_EQ(calls.back(), (std::vector<std::string>{"tar", "-zxPvf", mGood}));
}

TEST_F(UpdateTest, AFailedInstallShowsTheTextAndMayBeTriedAgain) {
  Choose(mGood);
  mPrograms.Script("tar", "echo /a/member; echo 'tar: no room' >&2; exit 2");
  std::string labels;
  WhenModalPress("OK", &labels);
  Press(mWindow->pbUpdate());
  EXPECT_EQ(labels, "Bad update file|Errors were reported when testing the file " + mGood +
                        "\n\n/a/member\ntar: no room\n|");
  EXPECT_EQ(Shown(), mGood + GoodLine + "Update File Read Error|on|on");
  mPrograms.Script("tar", "exec /bin/tar \"$@\"");
  WhenModalPress("Install Another");
  Press(mWindow->pbUpdate());
  EXPECT_EQ(Read(mPrograms.Path("installed/member")), "the member");
}

TEST_F(UpdateTest, AskedTwiceToCloseItEndsAndTheCommandFinishes) {
  Choose(mGood);
  mPrograms.Script("tar", "sleep 0.5; touch " + mPrograms.Path("finished"));
  CloseTwiceOnce([&] { return !mPrograms.Calls("tar").empty(); });
  FromToolkit([&] {
    mWindow->pbUpdate()->Raise("Action");
    ADD_FAILURE() << "the handler goes on";
  });
  EXPECT_FALSE(std::filesystem::exists(mPrograms.Path("finished")));
  Until([&] { return std::filesystem::exists(mPrograms.Path("finished")); });
}

TEST_F(UpdateTest, TheTestActionReadsWithoutTheRightsOfOthers) {
  const std::string plain = mPrograms.Update("plain.gz", GoodRecord);
  Choose(plain);
  const auto before = mPrograms.Calls("su").size();
  Press(mWindow->pbTest());
  EXPECT_EQ(Shown(), plain + "|Zelto Core|4.2.1||Update File Is Valid|on|on");
  EXPECT_EQ(mPrograms.Calls("su").size(), before);
  const std::string without = mPrograms.Update("none.gz", GoodRecord, "/tmp/.KVX.Other");
  for (const auto& bad : {mGood, without}) {  // the first has a blank in its name
    if (bad == without) WhenModalPress("Keep");
    Choose(bad);
    std::string labels;
    WhenModalPress("OK", &labels);
    Press(mWindow->pbTest());
    EXPECT_EQ(labels.find("Bad update file|Errors were reported when testing the file " + bad), 0U);
    EXPECT_EQ(Shown(), "|Zelto Core|4.2.1||Update File Read Error|off|off");
  }
}

TEST_F(UpdateTest, ACancelledOpenDialogSaysSoAndEmptiesTheFields) {
  Choose(mGood);
  std::string labels;
  WhenModal([&](QWidget& dialog) {
    EXPECT_EQ(dynamic_cast<QFileDialog&>(dialog).nameFilters(),
              QStringList("gzip compressed tar file (*.tgz *.tar.gz)"));
    WhenModalPress("OK", &labels);
    dialog.close();
  });
  Press(mWindow->BevelButton1());
  EXPECT_EQ(labels, "Unable to access file.|I am unable to open the file selected for reading.|");
  EXPECT_EQ(Shown(), "|Zelto Core|4.2.1||Ready|off|off");
}
