// Commands that fail or end in unusual ways.

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/runtime/Wait.h"
#include "tests/StubPrograms.h"

using namespace zelto;

namespace {

bool Says(const Ref<Shell>& shell, const char* text) {
  return Bytes(shell->ReadAll()).find(text) != std::string::npos;
}

}  // namespace

TEST(Hardening, MissingProgramIsReported) {
  const StubPrograms programs;
  const std::string update = programs.Update("u.tar.gz", GoodRecord);
  for (const std::string missing : {"sh", "su", "sudo", "tar"}) {
    const std::string folder = programs.Path("without-" + missing);
    std::filesystem::create_directory(folder);
    for (const std::string name : {"sh", "su", "sudo", "tar", "cat", "printenv", "gzip"}) {
      const bool isScript = name == "su" || name == "sudo";
      if (name != missing) {
        std::filesystem::create_symlink(isScript ? programs.Path("bin/" + name) : "/bin/" + name,
                                        folder + "/" + name);
      }
    }
    setenv("PATH", folder.c_str(), 1);
    const auto shell = NewShell();
    shell->Execute(FullExtract("secret", "zt", update));
    EXPECT_NE(shell->ErrorCode(), 0) << missing;
    EXPECT_TRUE(Says(shell, missing == "sh" ? "No such file" : "not found")) << missing;
  }
}

TEST(Hardening, LargeOutputUsesNoMemoryUntilItIsRead) {
  const auto shell = NewShell();
  shell->Mode(2);
  constexpr long megabyte = 1024 * 1024;
  const long size = 40 * Cases(1, 3) * megabyte;
  const long before = Resident();
  const std::string half = std::to_string(size / 2);
  shell->Execute({"head -c " + half + " /dev/zero | tr '\\0' x; head -c " + half +
                  " /dev/zero | tr '\\0' y >&2"});
  while (shell->IsRunning()) RuntimeAwait(-1, 1);
  EXPECT_LT(Resident() - before, megabyte);
  const String text = shell->ReadAll();
  EXPECT_EQ(LenB(text), size + 2);
#ifdef __SANITIZE_ADDRESS__
  constexpr long slack = 15 * megabyte;  // a sanitizer keeps freed memory
#else
  constexpr long slack = 5 * megabyte;
#endif
  EXPECT_LT(Resident() - before, size + slack);
}

TEST(Hardening, SignalsDoNotDisturbTheWaitForACommand) {
  struct sigaction action {};
  action.sa_handler = [](int) {};
  sigaction(SIGALRM, &action, nullptr);
  const itimerval often{{0, 500}, {0, 500}};
  setitimer(ITIMER_REAL, &often, nullptr);
  for (int i = 0; i < Cases(20, 500); ++i) {
    const auto shell = NewShell();
    shell->Execute({"printf '" + std::string(5000, 'x') + "'; exit " + std::to_string(i % 100)});
    EXPECT_EQ(shell->ErrorCode(), i % 100);
    EXPECT_EQ(LenB(shell->ReadAll()), 5001);
  }
  const itimerval never{};
  setitimer(ITIMER_REAL, &never, nullptr);
}

TEST(Hardening, FullProcessTableIsReported) {
  if (getuid() != 0) GTEST_SKIP() << "needs root to become another user";
  const pid_t child = fork();
  if (child == 0) {
    const auto shell = NewShell();
    const rlimit none{0, 0};
    if (setuid(65534) != 0 || setrlimit(RLIMIT_NPROC, &none) != 0) _exit(1);
    shell->Execute({"true"});
    _exit(shell->ErrorCode() == 127 && Says(shell, "temporarily unavailable") ? 0 : 1);
  }
  int status = 1;
  waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
}
