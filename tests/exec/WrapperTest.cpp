#include <grp.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <optional>

#include "exec/Wrapper.h"
#include "tests/StubPrograms.h"

using namespace zelto;

namespace {

struct Group {
  std::string Name;
  std::vector<const char*> Members;
};
// Empty: the groups of the system. The other tests run in a clone that a private group can change.
std::optional<Group> groupOfTest;

}  // namespace

// Replaces the function of the system, so that a test decides whether the user's group is private.
extern "C" group* getgrgid(gid_t id) {
  static group found;
  static std::array<char, 65536> text;
  group* result = nullptr;
  if (!groupOfTest) {
    getgrgid_r(id, &found, text.data(), text.size(), &result);
    return result;
  }
  static std::vector<char*> members;
  members.clear();
  for (const auto* name : groupOfTest->Members) members.push_back(const_cast<char*>(name));
  members.push_back(nullptr);
  found = {groupOfTest->Name.data(), nullptr, id, members.data()};
  return &found;
}

class WrapperTest : public testing::Test {
 protected:
  // True if others can change the file in the folder with these modes and this group.
  bool IsUnsafe(mode_t folder, mode_t file, gid_t group, Group members) {
    groupOfTest = std::move(members);
    for (const auto& [path, mode] : {std::pair(mFolder, folder), std::pair(mFile, file)}) {
      EXPECT_EQ(chown(path.c_str(), static_cast<uid_t>(-1), group), 0);
      EXPECT_EQ(chmod(path.c_str(), mode), 0);
    }
    return CanOthersChange(mFile);
  }

  WrapperTest() {
    std::filesystem::create_directory(mFolder);
    Write(mFile, "");
  }
  ~WrapperTest() override { groupOfTest.reset(); }

  StubPrograms mStubs;
  std::string mFolder = mStubs.Path("wrapper");
  std::string mFile = mFolder + "/sudo";
  const passwd& mUser = *getpwuid(geteuid());
};

TEST_F(WrapperTest, IsUsedOnlyIfNoOtherUserCanChangeIt) {
  const auto group = mUser.pw_gid;
  const std::string name = mUser.pw_name;
  EXPECT_FALSE(IsUnsafe(0700, 0700, group, {name, {}}));  // no other account must be able to enter
  EXPECT_FALSE(IsUnsafe(01777, 0555, group, {name, {}}));
  EXPECT_TRUE(IsUnsafe(0777, 0755, group, {name, {}}));
  EXPECT_TRUE(IsUnsafe(0755, 0757, group, {name, {}}));
  // The group of the user alone may write.
  EXPECT_FALSE(IsUnsafe(0775, 0775, group, {name, {}}));
  EXPECT_FALSE(IsUnsafe(0775, 0775, group, {name, {mUser.pw_name}}));
  EXPECT_TRUE(IsUnsafe(0775, 0755, group, {name, {"other"}}));
  EXPECT_TRUE(IsUnsafe(0755, 0775, group, {"users", {}}));
  if (getuid() == 0) {
    EXPECT_TRUE(IsUnsafe(0775, 0755, group + 1, {name, {}}));
    EXPECT_FALSE(IsUnsafe(0755, 0755, group + 1, {"users", {"other"}}));
  }
}

TEST_F(WrapperTest, IsARegularFileOfRootOrTheUserWithoutLinks) {
  EXPECT_TRUE(CanOthersChange("sudo"));
  EXPECT_TRUE(CanOthersChange(mFolder));
  EXPECT_TRUE(CanOthersChange(mFile + "none"));
  std::filesystem::create_symlink(mFile, mFolder + "/link");
  EXPECT_TRUE(CanOthersChange(mFolder + "/link"));
  std::filesystem::create_directory_symlink(mFolder, mStubs.Path("link"));
  EXPECT_TRUE(CanOthersChange(mStubs.Path("link/sudo")));
  if (getuid() != 0) GTEST_SKIP() << "needs root to give files to another user";
  for (const auto& owned : {mFolder, mFile}) {
    EXPECT_EQ(chown(owned.c_str(), 65534, 0), 0);
    EXPECT_TRUE(CanOthersChange(mFile)) << owned;
    EXPECT_EQ(chown(owned.c_str(), 0, 0), 0);
  }
}
