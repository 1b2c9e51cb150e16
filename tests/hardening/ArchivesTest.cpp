// Deceptive update files, and entries that other users plant at the record's path.

#include <sys/stat.h>
#include <unistd.h>

#include <sstream>

#include "tests/Fixtures.h"

using namespace zelto;

namespace {

constexpr const char* record = "/tmp/.KVX.Content";

class Archives : public RecordTest {
 protected:
  // The metadata that the window shows, or "refused".
  std::string Checked(const std::string& path) {
    bool isRefused = false;
    const auto waiting = WhenModal([&](QWidget& dialog) {
      isRefused = true;
      dialog.close();
    });
    Choose(path);
    delete waiting;
    const auto shown = ControlWidget<QLabel>(*mTop, "stProduct").text() + "|" +
                       ControlWidget<QLabel>(*mTop, "stVersion").text() + "|" +
                       ControlWidget<QPlainTextEdit>(*mTop, "EditField2").toPlainText();
    return isRefused ? "refused" : shown.toStdString();
  }

  std::string mGood = mStubs.Update("good.gz", "a=P\nb=V\nc=D\n");
};

const std::string falseRecord = "printf 'a=FALSE\\nb=FALSE\\nc=FALSE\\n'";

// True if there is no entry of that kind in /tmp but the record, and this is missing or a regular
// file of this user that others can only read.
bool IsOnlyASafeRecordWritten() {
  for (const auto& entry : std::filesystem::directory_iterator("/tmp")) {
    if (entry.path().string().starts_with("/tmp/.KVX.") && entry.path() != record) return false;
  }
  struct stat file {};
  if (lstat(record, &file) != 0) return true;
  return file.st_mode == (S_IFREG | 0644) && file.st_uid == getuid() && file.st_nlink == 1 &&
         file.st_size <= 65536;
}

}  // namespace

TEST_F(Archives, OddArchiveIsRefusedOrShownCorrectly) {
  const auto folder = mStubs.Path("odd");
  std::filesystem::create_directory(folder);
  const auto list = mStubs.Path("list");
  EXPECT_EQ(system(("python3 " ZELTO_ARCHIVES " " + folder + " >" + list).c_str()), 0);
  std::istringstream lines(Read(list));
  int count = 0;
  for (std::string name, expected; std::getline(lines, name, '\t'); ++count) {
    std::getline(lines, expected);
    EXPECT_EQ(Checked(folder + "/" + name), expected) << name;
    EXPECT_TRUE(IsOnlyASafeRecordWritten()) << name;
  }
  EXPECT_GT(count, 45);
}

// As a second utility does, which extracts its own record at the same time.
TEST_F(Archives, RecordThatAnotherUtilityReplacesIsNotShown) {
  EXPECT_EQ(Checked(mGood), "P|V|D");
  const std::string replace =
      falseRecord + " >" + mStubs.Path("other") + "; mv " + mStubs.Path("other ") + record;
  mStubs.Script("cat", "[ $# = 0 ] || { " + replace + "; }; exec /bin/cat \"$@\"");
  EXPECT_EQ(Checked(mGood), "refused");
  EXPECT_TRUE(mWindow->stProduct()->Text().IsNil());
}

TEST_F(Archives, PlantedEntryIsNeitherShownNorFollowed) {
  if (getuid() != 0) GTEST_SKIP() << "needs root to act for another user";
  const std::string victim = mStubs.Path("private");
  Write(victim, "a=PRIVATE\nb=PRIVATE\nc=PRIVATE\n");
  for (const auto& plant :
       {falseRecord + " >$R", "ln -s " + victim + " $R", "ln -s " + mStubs.Path("nowhere") + " $R",
        std::string("mkfifo $R"), std::string("mkdir $R"),
        "mkdir -m 700 $R; ln -s " + victim + " $R/held"}) {
    RemoveRecord();
    const auto command = "R=" + std::string(record) + "; " + plant + "; chown -h 65534 $R";
    EXPECT_EQ(system(command.c_str()), 0);
    EXPECT_EQ(Checked(mGood), "P|V|D") << plant;
    EXPECT_THAT(Read(victim), testing::StartsWith("a=PRIVATE")) << plant;
    EXPECT_FALSE(std::filesystem::exists(mStubs.Path("nowhere"))) << plant;
  }
}
