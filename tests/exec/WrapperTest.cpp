#include <grp.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <optional>
#include <utility>

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
bool isListed = false;
bool isPrimaryOfAnother = false;  // reset by the first use

}  // namespace

// Replaces functions of the system, so that a test decides whether the user's group is private.
extern "C" {
void setgrent() { isListed = false; }

group* getgrent() {
  static group found;
  static std::array<char, 65536> text;
  group* result = nullptr;
  if (std::exchange(isListed, true)) return nullptr;
  if (!groupOfTest) {
    getgrgid_r(getegid(), &found, text.data(), text.size(), &result);
    return result;
  }
  static std::vector<char*> members;
  members.clear();
  for (const auto* name : groupOfTest->Members) members.push_back(const_cast<char*>(name));
  members.push_back(nullptr);
  found = {groupOfTest->Name.data(), nullptr, getpwuid(geteuid())->pw_gid, members.data()};
  return &found;
}

passwd* getpwent() {
  static passwd other;
  if (!std::exchange(isPrimaryOfAnother, false)) return nullptr;
  other.pw_uid = geteuid() + 1;
  other.pw_gid = getpwuid(geteuid())->pw_gid;
  return &other;
}

// An account with the name of its shell, apart from real ones.
passwd* getpwnam(const char* name) {
  static passwd found;
  static std::string shell;
  if (std::string_view(name).find("sh") == std::string_view::npos) return nullptr;
  shell = std::string("/bin/") + name;
  found.pw_shell = shell.data();
  return &found;
}
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
    return !IsTrustworthy(mFile);
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
  EXPECT_TRUE(IsUnsafe(01777, 0555, group, {name, {}}));  // others could add a `su`
  EXPECT_TRUE(IsUnsafe(0777, 0755, group, {name, {}}));
  EXPECT_TRUE(IsUnsafe(0755, 0757, group, {name, {}}));
  // The group of the user alone may write.
  EXPECT_FALSE(IsUnsafe(0775, 0775, group, {name, {}}));
  EXPECT_FALSE(IsUnsafe(0775, 0775, group, {name, {mUser.pw_name}}));
  EXPECT_TRUE(IsUnsafe(0775, 0755, group, {name, {"other"}}));
  EXPECT_TRUE(IsUnsafe(0755, 0775, group, {"users", {}}));
  isPrimaryOfAnother = true;
  EXPECT_TRUE(IsUnsafe(0775, 0755, group, {name, {}}));
  if (getuid() == 0) {
    EXPECT_TRUE(IsUnsafe(0775, 0755, group + 1, {name, {}}));
    EXPECT_FALSE(IsUnsafe(0755, 0755, group + 1, {"users", {"other"}}));
  }
}

TEST_F(WrapperTest, HasAPathThatNoShellInterprets) {
  for (const std::string name : {"with blank", "c:d", "$(id)", "`id`", "q\"", "b\\"}) {
    const auto file = mStubs.Path(name) + "/sudo";
    std::filesystem::create_directory(mStubs.Path(name));
    Write(file, "");
    EXPECT_EQ(IsTrustworthy(file), name == "with blank") << name;
  }
}

TEST_F(WrapperTest, IsNotForShellsThatReadQuotesInAnotherWay) {
  for (const char* const shell : {"sh", "bash", "zsh"}) EXPECT_TRUE(HasCompatibleShell(shell));
  for (const char* const shell : {"csh", "tcsh", "fish"}) EXPECT_FALSE(HasCompatibleShell(shell));
  EXPECT_TRUE(HasCompatibleShell("unknown"));  // `su` reports it
  const auto shell = NewShell();
  shell->Execute(CredentialCheck("secret", "tcsh"));
  EXPECT_EQ(shell->ErrorCode(), 126);
  EXPECT_TRUE(mStubs.Calls("su").empty());
}

TEST_F(WrapperTest, IsARegularFileOfRootOrTheUserWithoutLinks) {
  EXPECT_FALSE(IsTrustworthy("sudo"));
  EXPECT_FALSE(IsTrustworthy(mFolder));
  EXPECT_FALSE(IsTrustworthy(mFile + "none"));
  std::filesystem::create_symlink(mFile, mFolder + "/link");
  EXPECT_FALSE(IsTrustworthy(mFolder + "/link"));
  std::filesystem::create_directory_symlink(mFolder, mStubs.Path("link"));
  EXPECT_FALSE(IsTrustworthy(mStubs.Path("link/sudo")));
  if (getuid() != 0) GTEST_SKIP() << "needs root to give files to another user";
  for (const auto& owned : {mFolder, mFile}) {
    EXPECT_EQ(chown(owned.c_str(), 65534, 0), 0);
    EXPECT_FALSE(IsTrustworthy(mFile)) << owned;
    EXPECT_EQ(chown(owned.c_str(), 0, 0), 0);
  }
}
