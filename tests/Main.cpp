#include <gtest/gtest.h>
#include <stdlib.h>

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
