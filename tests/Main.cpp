#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/file.h>

#include <filesystem>

#include "tests/StubPrograms.h"

// Qt's D-Bus module leaks some of its messages.
extern "C" const char* __lsan_default_suppressions() { return "leak:libQt6DBus\n"; }

// Keeps the other tests on this machine from the record until the process ends.
struct RecordLock : testing::Environment {
  void SetUp() override { flock(open("/", O_RDONLY | O_DIRECTORY | O_CLOEXEC), LOCK_EX); }
};

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  // Without this variable, Qt creates a runtime directory in /tmp and leaves it there.
  std::string runtime = (std::filesystem::temp_directory_path() / "zelto-runtime-XXXXXX").string();
  setenv("XDG_RUNTIME_DIR", mkdtemp(runtime.data()), 1);
  setenv("XDG_CONFIG_HOME", runtime.c_str(), 1);  // the user's settings stay out of the tests
  // An installation inhibits logout through the buses. A test must not do that to the person who
  // runs it. A test that needs a bus starts this program once more, with a private bus.
  if (!IsRunAgain()) {
    testing::AddGlobalTestEnvironment(new RecordLock);
    setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
    setenv("DBUS_SYSTEM_BUS_ADDRESS", "disabled:", 1);
  }
  signal(SIGPIPE, SIG_IGN);  // as RuntimeInit does
  testing::InitGoogleTest(&argc, argv);
  const int status = RUN_ALL_TESTS();
  std::filesystem::remove_all(runtime);
  return status;
}
