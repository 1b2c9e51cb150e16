#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <utility>

#include "exec/Wrapper.h"
#include "tests/StubPrograms.h"

using namespace zelto;

namespace {

// The user's group is private by default, so that the other tests accept a clone that it can
// change.
struct GroupOfUser {
  std::string Name = getpwuid(geteuid())->pw_name;
  const char* Member = nullptr;
  bool IsPrimaryOfAnother = false;
} groupOfUser;
bool isListed = false;         // getgrent has returned the group
bool isAnotherListed = false;  // getpwent has returned the other account

}  // namespace

// Replaces functions of the system, so that a test decides whether the user's group is private.
extern "C" {
void setgrent() { isListed = false; }

group* getgrent() {
  static char* members[2] = {};
  static group found;
  members[0] = const_cast<char*>(groupOfUser.Member);
  found = {groupOfUser.Name.data(), nullptr, getpwuid(geteuid())->pw_gid, members};
  return std::exchange(isListed, true) ? nullptr : &found;
}

void setpwent() { isAnotherListed = !groupOfUser.IsPrimaryOfAnother; }

passwd* getpwent() {
  static passwd other;
  other.pw_uid = geteuid() + 1;
  other.pw_gid = getpwuid(geteuid())->pw_gid;
  return std::exchange(isAnotherListed, true) ? nullptr : &other;
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
  bool IsUnsafe(mode_t folder, mode_t file, const GroupOfUser& user = {}, gid_t group = mGroup) {
    groupOfUser = user;
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
  ~WrapperTest() override { groupOfUser = {}; }

  static inline const gid_t mGroup = getpwuid(geteuid())->pw_gid;
  StubPrograms mStubs;
  std::string mFolder = mStubs.Path("wrapper");
  std::string mFile = mFolder + "/sudo";
};

TEST_F(WrapperTest, IsUsedOnlyIfNoOtherUserCanChangeIt) {
  const std::string name = GroupOfUser().Name;
  EXPECT_FALSE(IsUnsafe(0700, 0700));  // no other account must be able to enter
  EXPECT_TRUE(IsUnsafe(01777, 0555));  // others could add a `su`
  EXPECT_TRUE(IsUnsafe(0777, 0755));
  EXPECT_TRUE(IsUnsafe(0755, 0757));
  // The group of the user alone may write.
  EXPECT_FALSE(IsUnsafe(0775, 0775));
  EXPECT_FALSE(IsUnsafe(0775, 0775, {.Member = name.c_str()}));
  EXPECT_TRUE(IsUnsafe(0775, 0755, {.Member = "other"}));
  EXPECT_TRUE(IsUnsafe(0755, 0775, {.Name = "users"}));
  EXPECT_TRUE(IsUnsafe(0775, 0755, {.IsPrimaryOfAnother = true}));
  if (getuid() == 0) {
    EXPECT_TRUE(IsUnsafe(0775, 0755, {}, mGroup + 1));
    EXPECT_FALSE(IsUnsafe(0755, 0755, {.Name = "users", .Member = "other"}, mGroup + 1));
  }
}

TEST_F(WrapperTest, HasAPathThatNoShellInterprets) {
  for (const std::string name : {"with blank", "c:d", "$(id)", "`id`", "q\"", "b\\"}) {
    std::filesystem::copy(mFolder, mStubs.Path(name));
    EXPECT_EQ(IsTrustworthy(mStubs.Path(name) + "/sudo"), name == "with blank") << name;
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
  std::filesystem::create_symlink(mFile, mFolder + "/link");
  std::filesystem::create_directory_symlink(mFolder, mStubs.Path("link"));
  for (const std::string& other : {std::string("sudo"), mFolder, mFile + "none", mFolder + "/link",
                                   mStubs.Path("link/sudo")}) {
    EXPECT_FALSE(IsTrustworthy(other)) << other;
  }
  if (getuid() != 0) GTEST_SKIP() << "needs root to give files to another user";
  for (const auto& owned : {mFolder, mFile}) {
    EXPECT_EQ(chown(owned.c_str(), 65534, 0), 0);
    EXPECT_FALSE(IsTrustworthy(mFile)) << owned;
    EXPECT_EQ(chown(owned.c_str(), 0, 0), 0);
  }
}
