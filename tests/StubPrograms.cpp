#include "tests/StubPrograms.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <sstream>

#include "platform/runtime/Plugins.h"

namespace {

std::vector<std::string> Pieces(const std::string& text, char end) {
  std::vector<std::string> pieces;
  std::istringstream stream(text);
  for (std::string piece; std::getline(stream, piece, end);) pieces.push_back(piece);
  return pieces;
}

}  // namespace

StubPrograms::StubPrograms() : mPathBefore(getenv("PATH")) {
  std::string name = (std::filesystem::temp_directory_path() / "zelto-test-XXXXXX").string();
  mFolder = mkdtemp(name.data());
  std::filesystem::create_directory(mFolder / "bin");
  mkfifo(Path("gate").c_str(), 0600);
  mGate = open(Path("gate").c_str(), O_RDWR | O_CLOEXEC);
  setenv("PATH", (Path("bin") + ":" + mPathBefore).c_str(), 1);
  Script("su",
         "printf 'Password: ' >&2; read -r password\n"
         "case \"$password: $* \" in 'secret:'*' zt '*) ;;"
         " *) echo 'su: Authentication failure' >&2; exit 1;; esac\n"
         "while [ \"$1\" != -c ]; do shift; done\n"
         "calls=$(wc -c <'" +
             Path("su.calls") +
             "'); echo \"Before $calls.\"\n"
             "sh -c \"$2\"; status=$?; echo \"After $calls.\"; exit $status");
  Script("sudo",
         "case $1 in -K) exit;; -S) shift; read -r password;; esac\n"
         "echo 'This call is recorded.' >&2\n"
         "[ \"$password\" = secret ] || { echo 'sudo: no password was provided' >&2; exit 1; }\n"
         "exec \"$@\"");
}

StubPrograms::~StubPrograms() {
  Release();
  close(mGate);
  setenv("PATH", mPathBefore.c_str(), 1);
  std::filesystem::remove_all(mFolder);
}

void StubPrograms::Release() const { EXPECT_EQ(write(mGate, "\n", 1), 1); }

// The script first logs the arguments of its call, each followed by NUL, and then a record
// separator.
void StubPrograms::Script(const std::string& name, const std::string& body) const {
  const auto file = mFolder / "bin" / name;
  Write(file, "#!/bin/sh\n{ [ $# = 0 ] || printf '%s\\0' \"$@\"; printf '\\036'; } >>'" +
                  Path(name + ".calls") + "'\n" + body + "\n");
  std::filesystem::permissions(file, std::filesystem::perms::owner_all);
}

std::vector<std::vector<std::string>> StubPrograms::Calls(const std::string& program) const {
  std::vector<std::vector<std::string>> calls;
  for (const auto& call : Pieces(Read(Path(program + ".calls")), '\036')) {
    calls.push_back(Pieces(call, '\0'));
  }
  return calls;
}

std::string StubPrograms::Update(const std::string& name, const std::string& record) const {
  const std::string tree = Path("tree-" + std::to_string(std::hash<std::string>()(name)));
  std::filesystem::create_directory(tree);
  Write(tree + "/control", record);
  Write(tree + "/member", "the member");
  // tar renames the members as it adds them, so no file is created at their absolute names.
  setenv("ARCHIVE", Path(name).c_str(), 1);
  const std::string command = "tar -C " + tree +
                              " -czPf \"$ARCHIVE\" --transform='"
                              "s,^control$,/tmp/.KVX.Content,;s,^member$," +
                              Path("installed/member") + ",' control member";
  EXPECT_EQ(system(command.c_str()), 0);
  return Path(name);
}

bool RemoveRecord() {
  std::error_code error;
  std::filesystem::remove_all("/tmp/.KVX.Content", error);
  return !error;
}

zelto::Ref<zelto::Shell> NewShell() {
  zelto::PublishShell();
  zelto::InitPluginEntrypoints();
  return zelto::RuntimeNewObject<zelto::Shell>();
}

bool IsRunAgain() { return getenv("ZELTO_AGAIN") != nullptr; }

void RunAgain(const std::string& start, const std::string& program) {
  const auto* test = testing::UnitTest::GetInstance()->current_test_info();
  const std::string command = start + " env ZELTO_AGAIN=1 timeout 60 " + program +
                              " --gtest_filter=" + test->test_suite_name() + "." + test->name();
  EXPECT_EQ(system(command.c_str()), 0);
}

std::string Read(const std::filesystem::path& file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

void Write(const std::filesystem::path& file, const std::string& text) {
  std::ofstream(file, std::ios::binary) << text;
}
