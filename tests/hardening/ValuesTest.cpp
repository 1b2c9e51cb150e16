// Random values against stubs that record their arguments.

#include <algorithm>
#include <random>

#include "tests/StubPrograms.h"

using namespace zelto;
using namespace std::string_literals;

namespace {

using Words = std::vector<std::string>;

// PATH contains only `sh`, the wrapper and the stubs, so any other program fails as not found.
// The stubs record their arguments and input, and `su` also runs its command.
class RecordingStubs : public StubPrograms {
 public:
  explicit RecordingStubs(const std::string& loginShell = "sh") {
    const std::string reads = "IFS= read -r line; printf '%s\\n' \"$line\" >>" + Path("read");
    Script("su", reads + "; while [ \"$1\" != -c ]; do shift; done; exec /bin/" + loginShell +
                     " -c \"$2\"");
    Script("sudo", "[ \"$1\" != -S ] || { " + reads + "; }");
    Script("tar", "");
    std::filesystem::create_symlink("/bin/sh", Folder() / "bin/sh");
    setenv("PATH", Path("bin").c_str(), 1);
  }
};

std::string RandomValue(std::mt19937& random) {
  // Shell refuses NUL and newline. 036 is a separator of the stubs.
  static const std::string bytes = "'\" $\\`;|&()<>!*?[]{}~#\t\x01\x7F\rä€😀\xFF=-:/an0%^,";
  std::string value(1 + random() % 24, ' ');
  for (char& byte : value) byte = bytes[random() % bytes.size()];
  return value;
}

}  // namespace

TEST(Hardening, ValuesReachTheProgramsUnchanged) {
  std::mt19937 random(20261124);
  for (int i = 0; i < Cases(200, 10'000); ++i) {
    const RecordingStubs stubs(i % 2 ? "bash" : "dash");
    const auto passwd = RandomValue(random);
    const auto user = RandomValue(random);
    const auto path = "/" + RandomValue(random);
    const auto shell = NewShell();
    for (const auto& line : {CredentialCheck(passwd, user), FullExtract(passwd, user, path)}) {
      shell->Execute(line);
      // Ignores the argument of -c, a command line. What it runs is compared below.
      auto words = stubs.Calls("su").back();
      std::find(words.begin(), words.end(), "-c")[1].clear();
      const bool isDashed = user[0] == '-';
      EXPECT_EQ(words, isDashed ? (Words{"-c", "", "--", "-", user}) : (Words{user, "-c", ""}));
    }
    EXPECT_EQ(stubs.Calls("sudo"),
              (std::vector<Words>{{"-S", "/usr/bin/true"}, {"-S", "tar", "-zxPvf", path}}));
    const auto line = passwd + "\n";
    EXPECT_EQ(Read(stubs.Path("read")), line + line + line + line);
    EXPECT_EQ(shell->ErrorCode(), 0);
    EXPECT_EQ(Bytes(shell->ReadAll()), "");
  }
}

TEST(Hardening, ValuesWithNulOrNewlineStartNothing) {
  const RecordingStubs stubs;
  for (const auto& value : {"\n"s, "a\nb"s, "\0"s, "a\0b"s}) {
    for (const auto& line : {CredentialCheck(value, "zt"), CredentialCheck("secret", value),
                             MemberExtract("secret", "zt", value), ListingTest(value)}) {
      const auto shell = NewShell();
      shell->Execute(line);
      EXPECT_NE(shell->ErrorCode(), 0) << value;
    }
  }
  EXPECT_TRUE(stubs.Calls("su").empty() && stubs.Calls("tar").empty());
}

TEST(Hardening, MissingProgramIsReported) {
  for (const auto& [program, reason] : {std::pair("sudo", "not found"), {"sh", "No such file"}}) {
    const RecordingStubs stubs;
    std::filesystem::remove(stubs.Folder() / "bin" / program);
    const auto shell = NewShell();
    shell->Execute(CredentialCheck("secret", "zt"));
    EXPECT_EQ(shell->ErrorCode(), 127) << program;
    EXPECT_THAT(Bytes(shell->ReadAll()), testing::HasSubstr(reason));
  }
}
