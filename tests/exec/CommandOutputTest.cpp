#include <gtest/gtest.h>

#include "exec/CommandOutput.h"

using namespace zelto;

// The mark is "M".
TEST(CommandOutput, TextOfTheCommandIsBetweenTheMarks) {
  const struct {
    const char* Stream;
    const char* Text;
    const char* Note = "";
    const char* Password = "secret";
  } cases[] = {
      {"", ""},
      {"a\nb", "a\nb"},
      {"Password: su: Authentication failure\n", "su: Authentication failure\n"},
      {"a secret b\nthe Password: is\n", "a secret b\nthe Password: is\n"},
      {"Your password expires.\nMtextMLogged out.\n", "text"},
      {"M\nrecord\nMa:1Mbye", "\nrecord\n", "a:1"},
      {"xMecho secret\nM", "echo secret\n"},
      // A killed wrapper writes no end mark. The shell reports the pipeline.
      {"xMtext\nsh: line 1: 4 Done echo secret\n5 Killed sudo -S x\n",
       "text\n5 Killed sudo -S x\n"},
      {"4 Done   printf '%s\\n' 'it'\\''s' | 5 Killed su zt\nx", "x", "", "it's"},
      {"4 Done echo  | 5 Killed su zt", "4 Done echo  | 5 Killed su zt", "", ""},
  };
  for (const auto& [stream, text, note, password] : cases) {
    EXPECT_EQ(CommandText(stream, "M", password), text) << stream;
    EXPECT_TRUE(Note(stream, "M") == note) << stream;
  }
  EXPECT_TRUE(HasMark("aMb", "M"));
  EXPECT_FALSE(HasMark("ab", "M"));
}

TEST(CommandOutput, TextOfACredentialCheckPrecedesTheCommand) {
  const char* const cases[][3] = {{"Call 7 of 9.\na\n", "Call 6 of 9.\n", "7 of 9.\na\n"},
                                  {"Rec", "Recorded.\n", "Rec"},
                                  {"", "Recorded.\n", ""}};
  for (const auto& [text, check, rest] : cases) {
    std::string remaining = text;
    RemoveCommonPrefix(remaining, check);
    EXPECT_EQ(remaining, rest);
  }
}
