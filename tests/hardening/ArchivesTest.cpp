// Deceptive update files, and entries that other users plant at the record's path.

#include <sys/stat.h>
#include <unistd.h>

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
                     : Bytes(mWindow->stProduct()->Text() + "|" + mWindow->stVersion()->Text() +
                             "|" + mWindow->EditField2()->Text());
  }
};

const std::string goodLines = "printf 'a=P\\nb=V\\nc=D\\n' >control";
const std::string goodShown = "P|V|D";

}  // namespace

TEST_F(Archives, DeceptiveArchiveIsRefusedOrShownCorrectly) {
  const std::string secret = mStubs.Path("private");
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
      {"plain.gz", goodLines, goodShown},
      {"symlink.gz", "ln -s " + secret + " control", "refused"},
      {"hardlink.gz", "ln " + secret + " control", "refused", secret + " control"},
      {"folder.gz", "mkdir control", "refused"},
      {"pipe.gz", "mkfifo control", "refused"},
      {"device.gz", "true", "refused",
       "--transform=s,^/dev/null," + std::string(record) + ", /dev/null"},
      {"large.gz", goodLines + "; truncate -s " + size + " control", "refused"},
      {"twice.gz", "echo >control; " + goodLines + "2", goodShown, "control control2"},
      {"many.gz", goodLines + "; yes member | head -n 200000 >../list", goodShown,
       "control -T ../list"},
      {"bomb.gz", goodLines + "; truncate -s " + size + " member", goodShown},
      {"inside.gz", "mkdir control; touch control@evil; " + goodLines + "2", goodShown,
       "control control@evil control2"},
      {"above.gz", "mkdir control; touch " + above + "; " + goodLines + "2", goodShown,
       "control " + above + " control2"},
      {"link.gz", "ln -s " + target + " control; touch control@evil; " + goodLines + "2", goodShown,
       "control control@evil control2"},
      {"nested.gz",
       "mkdir control; ln -s " + target + " control@to; touch control@to@evil; " + goodLines + "2",
       goodShown, "control control@to control@to@evil control2"},
      {"later.gz", goodLines, goodShown, "member control"},
  };
  for (const auto& each : cases) {
    const auto path = Archive(each.Name, each.Commands, each.Members);
    EXPECT_EQ(Checked(path), each.Expected) << each.Name;
    EXPECT_EQ(Bytes(mWindow->stProduct()->Text()).find("PRIVATE"), std::string::npos) << each.Name;
    EXPECT_TRUE(std::filesystem::is_empty(target)) << each.Name;
    EXPECT_FALSE(std::filesystem::is_regular_file(record) &&
                 std::filesystem::file_size(record) > 65536)
        << each.Name;
  }
  EXPECT_TRUE(Read(secret).starts_with("a=PRIVATE"));
  // Without the front end, `tar` writes a record of any size.
  mStubs.Script("su", "read -r password; PATH=" + mStubs.Path("bin") + ":/bin; sh -c \"$3\"");
  EXPECT_EQ(Checked(mStubs.Path("plain.gz")), goodShown);
  EXPECT_EQ(Checked(Archive("over.gz", "head -c 65537 /dev/zero >control")), "refused");
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
      {"mkdir $R; touch $R/held", "refused"},
      {"mkdir -m 700 $R; ln -s " + victim + " $R/held", "refused"}};
  for (const auto& [plant, expected] : cases) {
    RemoveRecord();
    const auto command = "R=" + std::string(record) + "; " + plant + "; chown -h 65534 $R";
    EXPECT_EQ(system(command.c_str()), 0);
    EXPECT_EQ(Checked(good), expected) << plant;
    EXPECT_TRUE(Read(victim).starts_with("a=PRIVATE")) << plant;
    EXPECT_FALSE(std::filesystem::exists(mStubs.Path("nowhere"))) << plant;
  }
}
