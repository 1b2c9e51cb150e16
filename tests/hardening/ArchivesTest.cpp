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
  // them except `member`, in a new folder.
  std::string Archive(const std::string& name, const std::string& commands,
                      const std::string& members = "control member") {
    const std::string folder = mStubs.Path("tree-" + name);
    const std::string script = "mkdir " + folder + " && cd " + folder + " && echo m >member && { " +
                               commands + "; } && tar -czPf ../" + name +
                               " --transform='flags=r;s,^control[0-9]*," + record + ",;s,^member," +
                               mStubs.Path("installed/") + name + ",' " + members;
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
      {"large.gz",
       goodLines + "; truncate -s " + (getenv("ZELTO_LONG") ? "1G" : "20M") + " control",
       "refused"},
      {"twice.gz", "echo >control; printf 'a=P\\nb=V\\nc=D\\n' >control2", goodShown,
       "control control2"},
      {"many.gz", goodLines + "; yes member | head -n 200000 >../list", goodShown,
       "control -T ../list"},
      {"bomb.gz", goodLines + "; truncate -s " + (getenv("ZELTO_LONG") ? "2G" : "50M") + " member",
       goodShown},
      {"later.gz", goodLines, goodShown, "member control"},
  };
  for (const auto& each : cases) {
    const auto path = Archive(each.Name, each.Commands, each.Members);
    EXPECT_EQ(Checked(path), each.Expected) << each.Name;
    EXPECT_EQ(Bytes(mWindow->stProduct()->Text()).find("PRIVATE"), std::string::npos) << each.Name;
  }
  EXPECT_TRUE(Read(secret).starts_with("a=PRIVATE"));
  // Without the front end, `tar` writes a record of any size.
  mStubs.Script("su", "read -r password; PATH=" + mStubs.Path("bin") + ":/bin; sh -c \"$3\"");
  EXPECT_EQ(Checked(mStubs.Path("plain.gz")), goodShown);
  EXPECT_EQ(Checked(Archive("over.gz", "head -c 65537 /dev/zero >control")), "refused");
  for (const std::string make :
       {"gzip -c /dev/null", "printf none | xz -c", "head -c 9999 /dev/urandom"}) {
    const std::string path = mStubs.Path("other.gz");
    EXPECT_EQ(system((make + " >" + path).c_str()), 0);
    EXPECT_EQ(Checked(path), "refused") << make;
  }
}

TEST_F(Archives, PlantedEntryIsNeitherShownNorFollowed) {
  if (getuid() != 0) GTEST_SKIP() << "needs root to act for another user";
  const auto good = Archive("good.gz", goodLines);
  const std::string victim = mStubs.Path("private");
  const struct {
    std::string Plant;
    std::string Expected;
  } cases[] = {{"printf 'a=FALSE\\nb=FALSE\\nc=FALSE\\n' >$R", goodShown},
               {"ln -s " + victim + " $R", goodShown},
               {"ln -s " + mStubs.Path("nowhere") + " $R", goodShown},
               {"mkfifo $R", goodShown},
               {"mkdir $R", goodShown},
               {"mkdir $R; touch $R/held", "refused"},
               {"mkdir -m 700 $R; ln -s " + victim + " $R/held", "refused"}};
  for (const auto& each : cases) {
    RemoveRecord();
    const std::string plant =
        "R=" + std::string(record) + "; " + each.Plant + "; chown -h 65534 $R";
    EXPECT_EQ(system(plant.c_str()), 0);
    EXPECT_EQ(Checked(good), each.Expected) << each.Plant;
    EXPECT_TRUE(Read(victim).starts_with("a=PRIVATE")) << each.Plant;
    EXPECT_FALSE(std::filesystem::exists(mStubs.Path("nowhere"))) << each.Plant;
  }
}
