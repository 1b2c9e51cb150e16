// Random values against stubs that record their arguments.

#include <random>

#include "tests/StubPrograms.h"
#include "tests/hardening/Tally.h"

using namespace zelto;

namespace {

// PATH contains only `sh`, the front end and the stubs. The stubs record their arguments and input,
// and `su` runs its command. Any other command therefore fails as not found.
class RecordingStubs : public StubPrograms {
 public:
  explicit RecordingStubs(const std::string& loginShell = "sh") {
    const std::string reports =
        "{ printf '%s' \"${0##*/}\"; for word; do printf '\\037%s' \"$word\"; done; printf "
        "'\\036'; } >>" +
        Path("told");
    const std::string reads =
        "{ IFS= read -r line; printf 'read\\037%s\\036' \"$line\"; } >>" + Path("told");
    Script("su", reports + "; " + reads + "; while [ \"$1\" != -c ]; do shift; done; exec /bin/" +
                     loginShell + " -c \"$2\"");
    Script("sudo", reports + "; [ \"$1\" != -S ] || " + reads);
    Script("tar", reports);
    std::filesystem::create_symlink("/bin/sh", Folder() / "bin/sh");
    setenv("PATH", Programs().c_str(), 1);
  }

  std::string Reported(const CommandLine& command) const {
    const auto shell = NewShell();
    shell->Execute(command);
    const auto told = Read(Path("told")) + Bytes(shell->ReadAll());
    std::filesystem::remove(Path("told"));
    return told + (shell->ErrorCode() == 0 ? "" : "failed");
  }
};

std::string Reported(const std::vector<std::string>& words) {
  std::string told;
  for (const auto& word : words) told += (told.empty() ? "" : "\037") + word;
  return told + "\036";
}

std::string RandomValue(std::mt19937& random) {
  // The shell refuses NUL and newline. 036 and 037 are separators of the stubs.
  static const std::vector<std::string> parts{
      "'",    "\"", " ", "$", "\\", "`", ";", "|",  "&",    "(",    ")",  "<",  ">",  "!",   "*",
      "?",    "[",  "]", "{", "}",  "~", "#", "\t", "\x01", "\x7F", "\r", "ä",  "€",  "😀",   "\xFF",
      "\xC3", "=",  "-", ":", "/",  "a", "n", "0",  "%",    "^",    ",",  "$(", "${", "\\n", "--"};
  std::uniform_int_distribution<std::size_t> part(0, parts.size() - 1);
  std::string value;
  for (auto length = std::uniform_int_distribution(1, 24)(random); length > 0; --length) {
    value += parts[part(random)];
  }
  return value;
}

}  // namespace

TEST(Hardening, ValuesReachTheProgramsUnchanged) {
  Tally tally("a value reaches su, sudo and tar byte for byte, and nothing else runs");
  std::mt19937 random(20261124);
  for (int i = 0; i < Cases(200, 10'000); ++i) {
    const RecordingStubs stubs(i % 2 ? "bash" : "dash");
    const auto passwd = RandomValue(random);
    const auto user = RandomValue(random);
    const auto path = "/" + RandomValue(random);
    const auto runs = [&](const std::string& command, const std::string& after) {
      std::vector<std::string> words{"su", user, "-c", command};
      if (user[0] == '-') words = {"su", "-c", command, "--", "-", user};
      return Reported(words) + Reported({"read", passwd}) + after;
    };
    // The argument of -c is a command line. The commands that it runs are recorded as well.
    const auto argument = [](const std::string& told) {
      const auto start = told.find("\037-c\037") + 4;
      return told.substr(start, told.find_first_of("\036\037", start) - start);
    };
    const auto checked = stubs.Reported(CredentialCheck(passwd, user));
    tally.Case(checked == runs(argument(checked), Reported({"sudo", "-S", "/usr/bin/true"}) +
                                                      Reported({"read", passwd})),
               checked);
    const auto extracted = stubs.Reported(FullExtract(passwd, user, path));
    tally.Case(
        extracted == runs(argument(extracted), Reported({"sudo", "-S", "tar", "-zxPvf", path}) +
                                                   Reported({"read", passwd})),
        extracted);
  }
}

TEST(Hardening, ValuesWithNulOrNewlineStartNothing) {
  const RecordingStubs stubs;
  Tally tally("a value with NUL or newline starts nothing");
  std::mt19937 random(7);
  for (int i = 0; i < Cases(50, 1000); ++i) {
    auto value = RandomValue(random);
    value.insert(random() % (value.size() + 1), 1, i % 2 ? '\n' : '\0');
    for (const auto& line : {CredentialCheck(value, "zt"), CredentialCheck("secret", value),
                             MemberExtract("secret", "zt", value), ListingTest(value)}) {
      const auto told = stubs.Reported(line);
      tally.Case(told.find('\036') == told.npos && told.ends_with("failed"), told);
    }
  }
}
