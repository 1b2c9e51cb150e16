#include "tests/StubPrograms.h"

using namespace zelto;

TEST(CommandLines, HaveTheExactText) {
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
  EXPECT_EQ(Bytes(MemberRead("p=\xC3\xA4", "=b").Text),
            "echo p=\xC3\xA4 | su '=b' -c 'sudo cat /tmp/.KVX.Content'");
  EXPECT_EQ(Bytes(FullExtract("pw1", "-ann", "host:c.gz").Text),
            "echo pw1 | su -c 'sudo tar -zxPvf \"./host:c.gz\"' -- - -ann");
  EXPECT_EQ(Bytes(ListingTest("/a b/c.tar.gz").Text), "tar -tzf /a b/c.tar.gz /tmp/.KVX.Content");
}

TEST(CommandLines, ListingTestSplitsOnlyAtBlanks) {
  const StubPrograms programs;
  programs.Script("tar", "exit 0");
  NewShell()->Execute(ListingTest("host:$HOME;x`y`'\"\\ --checkpoint-action=exec=sh.gz"));
  const std::vector<std::string> words{"-tzf", "./host:$HOME;x`y`'\"\\",
                                       "./--checkpoint-action=exec=sh.gz", "/tmp/.KVX.Content"};
  EXPECT_EQ(programs.Calls("tar").back(), words);
}
