#include "tests/StubPrograms.h"

using namespace zelto;

TEST(CommandLines, HaveTheExactText) {
  const std::pair<CommandLine, const char*> cases[] = {
      {ForgetCredentials(), "sudo -K"},
      {CredentialCheck("pw1", "ann"), "echo pw1 | su ann -c 'echo pw1 | sudo -S /usr/bin/true'"},
      {CredentialCheck("", "ann"), "echo  | su ann -c 'echo  | sudo -S /usr/bin/true'"},
      {MemberExtract("pw1", "ann", "/a b/c.tar.gz"),
       "echo pw1 | su ann -c 'sudo tar -zxPvf \"/a b/c.tar.gz\" /tmp/.KVX.Content'"},
      {MemberRead("pw1", "ann"), "echo pw1 | su ann -c 'sudo cat /tmp/.KVX.Content'"},
      {FullExtract("pw1", "ann", "/a b/c.tar.gz"),
       "echo pw1 | su ann -c 'sudo tar -zxPvf \"/a b/c.tar.gz\"'"},
      {MemberRead("p=\xC3\xA4", "=b"), "echo p=\xC3\xA4 | su '=b' -c 'sudo cat /tmp/.KVX.Content'"},
      {FullExtract("pw1", "-ann", "host:c.gz"),
       "echo pw1 | su -c 'sudo tar -zxPvf \"./host:c.gz\"' -- - -ann"},
      {ListingTest("/a b/c.tar.gz"), "tar -tzf /a b/c.tar.gz /tmp/.KVX.Content"}};
  for (const auto& [command, text] : cases) EXPECT_EQ(Bytes(command.Text), text);
}

// In GBK, the last byte of this character forms one with a backslash that follows it.
TEST(CommandLines, BackslashesFollowQuotes) {
  EXPECT_EQ(Bytes(FullExtract("pw1", "ann", "/\xE9\xA3\x9E`x`.gz").Text),
            "echo pw1 | su ann -c 'sudo tar -zxPvf \"/\xE9\xA3\x9E\"\"\\`x\"\"\\`.gz\"'");
}

TEST(CommandLines, ListingTestSplitsOnlyAtBlanks) {
  const StubPrograms programs;
  programs.Script("tar", "exit 0");
  NewShell()->Execute(ListingTest("host:$HOME;x`y`'\"\\ --checkpoint-action=exec=sh.gz"));
  const std::vector<std::string> words{"-tzf", "./host:$HOME;x`y`'\"\\",
                                       "./--checkpoint-action=exec=sh.gz", "/tmp/.KVX.Content"};
  EXPECT_EQ(programs.Calls("tar").back(), words);
}
