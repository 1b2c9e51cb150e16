#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <tuple>

#include "exec/FrontEnd.h"
#include "tests/StubPrograms.h"

using namespace zelto;

TEST(FrontEnd, IsUsedOnlyIfAllCanExecuteAndNoOtherUserCanChangeIt) {
  const StubPrograms folder;
  const std::string front = folder.Path("front");
  const std::string file = front + "/sudo";
  const std::tuple<mode_t, mode_t, mode_t, bool> modes[] = {
      {0711, 01777, 0555, true}, {0700, 0755, 0755, false}, {0755, 0750, 0755, false},
      {0777, 0755, 0755, false}, {0755, 0775, 0755, false}, {0755, 0755, 0775, false},
      {0755, 0755, 0711, false}, {0755, 0755, 0644, false}, {0755, 0755, 0755, true}};
  for (const auto& [ofAll, ofFolder, ofFile, isSafe] : modes) {
    EXPECT_EQ(chmod(folder.Folder().c_str(), ofAll), 0);
    EXPECT_EQ(chmod(front.c_str(), ofFolder), 0);
    EXPECT_EQ(chmod(file.c_str(), ofFile), 0);
    EXPECT_EQ(IsSafeForAll(file), isSafe) << ofAll << " " << ofFolder << " " << ofFile;
  }
  EXPECT_FALSE(IsSafeForAll(front));
  EXPECT_FALSE(IsSafeForAll(file + "none"));
  std::filesystem::create_symlink(file, front + "/link");
  EXPECT_FALSE(IsSafeForAll(front + "/link"));
  if (getuid() != 0) GTEST_SKIP() << "needs root to give files to another user";
  for (const auto& owned : {front, file}) {
    EXPECT_EQ(chown(owned.c_str(), 65534, 0), 0);
    EXPECT_FALSE(IsSafeForAll(file)) << owned;
    EXPECT_EQ(chown(owned.c_str(), 0, 0), 0);
  }
}
