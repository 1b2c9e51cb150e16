// Deceptive update files, and entries that other users plant at the record's path.

#include <sys/stat.h>
#include <unistd.h>

#include <QLabel>
#include <QPlainTextEdit>
#include <sstream>

#include "tests/Fixtures.h"

using namespace zelto;

namespace {

constexpr const char* record = "/tmp/.KVX.Content";

class Archives : public RecordTest {
 protected:
  Archives() { Write(mStubs.Path("private"), "a=PRIVATE\nb=PRIVATE\nc=PRIVATE\n"); }

  // Makes an archive of `members`, which can include options of tar. The commands create all of
  // them except `member`, in a new folder. "control" stands for the record's path and "@" for "/".
  std::string Archive(const std::string& name, const std::string& commands,
                      const std::string& members = "control member") {
    const std::string folder = mStubs.Path("tree-" + name);
    const std::string script = "mkdir " + folder + " && cd " + folder + " && echo m >member && { " +
                               commands + "; } && tar -czPf ../" + name +
                               " --transform='flags=r;s,^control[0-9]*," + record + ",;s,^member," +
                               mStubs.Path("installed/") + name + ",;s,@,/,g' " + members;
    EXPECT_EQ(system(script.c_str()), 0) << name;
    return mStubs.Path(name);
  }

  // True if the record is missing or a regular file of this user that others can only read.
  static bool IsAbsentOrSafe() {
    struct stat file {};
    if (lstat(record, &file) != 0) return true;
    return file.st_mode == (S_IFREG | 0644) && file.st_uid == getuid() && file.st_nlink == 1 &&
           file.st_size <= 65536;
  }

  std::string Label(const char* name) {
    return ControlWidget<QLabel>(*mTop, name).text().toStdString();
  }

  // The metadata that the window shows, or "refused".
  std::string Checked(const std::string& path) {
    bool isRefused = false;
    const auto waiting = WhenModal([&](QWidget& dialog) {
      isRefused = true;
      dialog.close();
    });
    Choose(path);
    delete waiting;
    return isRefused ? "refused"
                     : Label("stProduct") + "|" + Label("stVersion") + "|" +
                           mTop->findChild<QPlainTextEdit*>()->toPlainText().toStdString();
  }
};

const std::string goodLines = "printf 'a=P\\nb=V\\nc=D\\n' >control";
const std::string goodShown = "P|V|D";

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
    EXPECT_TRUE(IsAbsentOrSafe()) << name;
  }
  EXPECT_GT(count, 45);
}

TEST_F(Archives, CheckWritesNothingBesidesTheRecord) {
  const std::string target = mStubs.Path("target");
  std::filesystem::create_directory(target);
  const std::string above = "control@..@" + mStubs.Folder().filename().string() + "@target@evil";
  const std::string size = getenv("ZELTO_LONG") ? "2G" : "50M";
  const struct {
    const char* Name;
    std::string Commands;
    std::string Expected;
    std::string Members = "control member";
  } cases[] = {
      {"large.gz", goodLines + "; truncate -s " + size + " control", "refused"},
      {"many.gz", goodLines + "; yes member | head -n 200000 >../list", goodShown,
       "control -T ../list"},
      {"bomb.gz", goodLines + "; truncate -s " + size + " member", goodShown},
      {"above.gz", "mkdir control; touch " + above + "; " + goodLines + "2", goodShown,
       "control " + above + " control2"},
      {"nested.gz",
       "mkdir control; ln -s " + target + " control@to; touch control@to@evil; " + goodLines + "2",
       goodShown, "control control@to control@to@evil control2"},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(Checked(Archive(each.Name, each.Commands, each.Members)), each.Expected) << each.Name;
    EXPECT_TRUE(std::filesystem::is_empty(target)) << each.Name;
    EXPECT_TRUE(IsAbsentOrSafe()) << each.Name;
  }
  // A pipe would make `tar` wait for ever.
  EXPECT_EQ(system(("mkfifo " + mStubs.Path("pipe.gz")).c_str()), 0);
  EXPECT_EQ(Checked(mStubs.Path("pipe.gz")), "refused");
}

// As a second utility does, which extracts its own record at the same time.
TEST_F(Archives, RecordThatAnotherUtilityReplacesIsNotShown) {
  const auto good = Archive("good.gz", goodLines);
  EXPECT_EQ(Checked(good), goodShown);
  const std::string other = "printf 'a=FALSE\\nb=FALSE\\nc=FALSE\\n' >" + mStubs.Path("other") +
                            "; mv " + mStubs.Path("other ") + record;
  mStubs.Script("cat", "[ $# = 0 ] || { " + other + "; }; exec /bin/cat \"$@\"");
  EXPECT_EQ(Checked(good), "refused");
  EXPECT_TRUE(mWindow->stProduct()->Text().IsNil());
}

TEST_F(Archives, PlantedEntryIsNeitherShownNorFollowed) {
  if (getuid() != 0) GTEST_SKIP() << "needs root to act for another user";
  const auto good = Archive("good.gz", goodLines);
  const std::string victim = mStubs.Path("private");
  const std::pair<std::string, std::string> cases[] = {
      {"printf 'a=FALSE\\nb=FALSE\\nc=FALSE\\n' >$R", goodShown},
      {"ln -s " + victim + " $R", goodShown},
      {"ln -s " + mStubs.Path("nowhere") + " $R", goodShown},
      {"mkfifo $R", goodShown},
      {"mkdir $R", goodShown},
      {"mkdir -m 700 $R; ln -s " + victim + " $R/held", goodShown}};
  for (const auto& [plant, expected] : cases) {
    RemoveRecord();
    const auto command = "R=" + std::string(record) + "; " + plant + "; chown -h 65534 $R";
    EXPECT_EQ(system(command.c_str()), 0);
    EXPECT_EQ(Checked(good), expected) << plant;
    EXPECT_TRUE(Read(victim).starts_with("a=PRIVATE")) << plant;
    EXPECT_FALSE(std::filesystem::exists(mStubs.Path("nowhere"))) << plant;
  }
}
