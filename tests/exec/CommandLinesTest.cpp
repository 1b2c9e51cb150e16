#include <gtest/gtest.h>

#include "exec/Shell.h"
#include "platform/runtime/Plugins.h"
#include "tests/Programs.h"

using namespace zelto;

namespace {

const char* const oddValues[] = {"it's",         "a\"b",  "$HOME", "`touch x`", "a\\nb", "-n",
                                 "two words",    "(x)&y", "pä$$",  "-",         "\\",    "--help",
                                 "a;b|c",        "~",     "#x",    "*?[a]{}",   "!x!",   "=ls",
                                 "\x01\x7F\xFF", "\t",    "'",     "''\"\"",    "$(id)", "a\rb",
                                 "x; true #"};

Ref<Shell> NewShell() {
  InitPluginEntrypoints();
  return RuntimeNewObject<Shell>();
}

}  // namespace

TEST(CommandLines, StandCharacterByCharacterForOrdinaryValues) {
  EXPECT_EQ(Bytes(ForgetCredentials().Text), "sudo -K");
  EXPECT_EQ(Bytes(CredentialCheck("pw1", "ann").Text),
            "echo pw1 | su ann -c 'echo pw1 | sudo -S /usr/bin/true'");
  EXPECT_EQ(Bytes(CredentialCheck("", "ann").Text),
            "echo  | su ann -c 'echo  | sudo -S /usr/bin/true'");
  EXPECT_EQ(Bytes(MemberExtract("pw1", "ann", "/a b/c.tar.gz").Text),
            "echo pw1 | su ann -c 'sudo tar -zxPvf \"/a b/c.tar.gz\" /tmp/.KVX.Content'");
  EXPECT_EQ(Bytes(MemberRead("pw1", "ann").Text),
            "echo pw1 | su ann -c 'sudo cat /tmp/.KVX.Content'");
  EXPECT_EQ(Bytes(FullExtract("pw1", "ann", "/a b/c.tar.gz").Text),
            "echo pw1 | su ann -c 'sudo tar -zxPvf \"/a b/c.tar.gz\"'");
  EXPECT_EQ(Bytes(ListingTest("/a b/c.tar.gz").Text), "tar -tzf /a b/c.tar.gz /tmp/.KVX.Content");
}

TEST(CommandLines, KeepOddPasswordsWholeInEveryShell) {
  for (const char* const loginShell : {"dash", "bash"}) {
    for (const char* const password : oddValues) {
      const Programs programs(password, loginShell);
      const auto shell = NewShell();
      shell->Execute(CredentialCheck(password, "zt"));
      EXPECT_EQ(shell->ErrorCode(), 0) << loginShell << " " << password;
      EXPECT_EQ(programs.Passwords("su"), std::vector<std::string>{password});
      EXPECT_EQ(programs.Passwords("sudo"), std::vector<std::string>{password});
      shell->Execute(MemberRead(password, "zt"));
      EXPECT_EQ(programs.Calls("sudo").back(),
                (std::vector<std::string>{"cat", "/tmp/.KVX.Content"}));
    }
  }
}

TEST(CommandLines, KeepOddPathsWholeInEveryShell) {
  for (const char* const loginShell : {"dash", "bash"}) {
    const Programs programs("secret", loginShell);
    for (const std::string value : oddValues) {
      for (const std::string& path : {value, "/x/" + value, "h:" + value}) {
        NewShell()->Execute(FullExtract("secret", "zt", path));
        const auto words = programs.Calls("sudo").back();
        const bool needsFolder = path[0] != '/' && (path[0] == '-' || path.find(':') != path.npos);
        EXPECT_EQ(words,
                  (std::vector<std::string>{"tar", "-zxPvf", (needsFolder ? "./" : "") + path}));
      }
    }
  }
}

TEST(CommandLines, NeverTakeAUserNameForAnythingElse) {
  const Programs programs;
  programs.Script("su", "exit 1");
  for (const std::string user : oddValues) {
    NewShell()->Execute(CredentialCheck("secret", user));
    const auto words = programs.Calls("su").back();
    const bool isLast =
        words.size() == 5 && words[2] == "--" && words[3] == "-" && words[4] == user;
    const bool isFirst =
        words.size() == 3 && words[0] == user && user[0] != '-' && words[1] == "-c";
    EXPECT_TRUE(isLast || isFirst) << user;
  }
  EXPECT_EQ(programs.Calls("sudo").size(), 0U);
}

TEST(CommandLines, ListingTestSplitsAtBlanksAndNowhereElse) {
  const Programs programs;
  programs.Script("tar", "exit 0");
  const std::pair<const char*, std::vector<std::string>> cases[] = {
      {"/a/b.gz", {"/a/b.gz"}},
      {"/a b.gz", {"/a", "b.gz"}},
      {"/a$HOME;x`y`'\"\\.gz", {"/a$HOME;x`y`'\"\\.gz"}},
      {"/a --checkpoint-action=exec=sh.gz", {"/a", "./--checkpoint-action=exec=sh.gz"}},
      {"host:x.gz", {"./host:x.gz"}}};
  for (const auto& [path, words] : cases) {
    NewShell()->Execute(ListingTest(path));
    std::vector<std::string> expected{"-tzf"};
    expected.insert(expected.end(), words.begin(), words.end());
    expected.push_back("/tmp/.KVX.Content");
    EXPECT_EQ(programs.Calls("tar").back(), expected);
  }
}
