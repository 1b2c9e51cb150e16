#include "platform/runtime/Numbers.h"
#include "platform/runtime/Plugins.h"
#include "tests/StubPrograms.h"

using namespace zelto;

TEST(String, NilIsTheEmptyStringAndComparisonIsExactUnlessAsked) {
  EXPECT_TRUE(String("").IsNil());
  EXPECT_EQ(Bytes("a" + String() + EndOfLine() + EndOfLine() + "b"), "a\n\nb");
  EXPECT_FALSE(String("gz") == "GZ");
  EXPECT_EQ(RuntimeStringCompare(String("gZ"), "Gz"), 0);
  EXPECT_LT(RuntimeStringCompare(String("a"), "B"), 0);
  EXPECT_GT(RuntimeStringCompare(String("ab"), "A"), 0);
  EXPECT_TRUE(EndOfLine() == String("\n") && EndOfLine() < String("a"));
  EXPECT_EQ(Bytes(EndOfLine() + "a"), "\na");
}

TEST(String, LenCountsCharactersAndLenBCountsBytes) {
  const String text = "pä€😀z";
  EXPECT_EQ(LenB(text), 11);
  EXPECT_EQ(Len(text), 5);
  EXPECT_EQ(Bytes(Right(text, 2)), "😀z");
  EXPECT_EQ(Bytes(Right(text, 99)), Bytes(text));
}

TEST(Numbers, RealsAreTruncated) {
  EXPECT_EQ(RuntimeCvtReal64ToSInt32(2.9), 2);
  EXPECT_EQ(RuntimeCvtReal64ToSInt32(-2.9), -2);
  EXPECT_EQ(RuntimeCvtReal64ToSInt32(1e10), 2147483647);
}

TEST(Plugins, CallOfAnotherTypeOrOfAMissingEntryThrows) {
  RuntimePublishPluginEntrypoints({{"Shell.Write(s as String)", +[](int) {}}});
  InitPluginEntrypoints();
  EXPECT_THROW(Glink<int(int)>(PluginSlotOf("Shell.Write(s as String)"), 0), TypeMismatchException);
  EXPECT_THROW(Glink<void()>(PluginSlotOf("Shell.WriteLine(s as String)")),
               FunctionNotFoundException);
}
