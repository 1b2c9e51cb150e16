#include <gtest/gtest.h>

#include "platform/runtime/Object.h"
#include "platform/runtime/Plugins.h"
#include "tests/StubPrograms.h"

using namespace zelto;

TEST(String, NilIsTheEmptyString) {
  EXPECT_TRUE(String("").IsNil());
  EXPECT_EQ(LenB(String()), 0);
  EXPECT_EQ(Bytes(String() + "a"), "a");
  EXPECT_EQ(Bytes("a" + String()), "a");
  EXPECT_EQ(Bytes("a" + EndOfLine() + EndOfLine() + "b"), "a\n\nb");
}

TEST(String, ComparesExactlyOrCaseInsensitively) {
  EXPECT_FALSE(String("gz") == "GZ");
  EXPECT_EQ(RuntimeStringCompare(String("gZ"), "Gz"), 0);
  EXPECT_LT(RuntimeStringCompare(String("a"), "B"), 0);
  EXPECT_GT(RuntimeStringCompare(String("ab"), "A"), 0);
  EXPECT_TRUE(EndOfLine() == "\n" && String("\n") == EndOfLine());
  EXPECT_TRUE(EndOfLine() < "a");
}

TEST(String, LenCountsCharactersAndLenBCountsBytes) {
  const String text = "pä€😀z";
  EXPECT_EQ(LenB(text), 11);
  EXPECT_EQ(Len(text), 5);
  EXPECT_EQ(Bytes(Right(text, 2)), "😀z");
  EXPECT_EQ(Bytes(Right(text, 99)), Bytes(text));
  EXPECT_TRUE(Right(text, 0).IsNil());
  EXPECT_EQ(Bytes(Right("\x80\x80", 1)).size(), 2U);  // continuation bytes only
}

TEST(String, SplitAndNthFieldFindPieces) {
  const auto pieces = Split("a==b=", "=");
  ASSERT_EQ(pieces.size(), 4U);
  EXPECT_EQ(Bytes(pieces[2]), "b");
  EXPECT_TRUE(ElementAt(pieces, 3).IsNil());
  EXPECT_TRUE(ElementAt(pieces, 4).IsNil());
  EXPECT_TRUE(ElementAt(pieces, -1).IsNil());
  EXPECT_EQ(Split(String(), "=").size(), 1U);
  EXPECT_EQ(Bytes(NthField("x=1=2", "=", 2)), "1");
  EXPECT_EQ(Bytes(NthField("x=1=2", "=", 1)), "x");
  for (const Int32 n : {0, 4}) EXPECT_TRUE(NthField("x=1=2", "=", n).IsNil()) << n;
  EXPECT_EQ(Bytes(NthField("aXXb", "XX", 2)), "b");
}

TEST(Objects, LiveUntilTheLastReferenceAndAreCastByTheirClass) {
  struct Base : Object {
    bool* IsDestroyed = nullptr;
    ~Base() override {
      if (IsDestroyed) *IsDestroyed = true;
    }
  };
  struct Derived : Base {};
  struct Other : Object {};
  const Ref<Base> nil;
  EXPECT_THROW(nil->IsDestroyed, NilObjectException);
  EXPECT_FALSE(RuntimeCheckCast<Derived>(nil));
  bool isDestroyed = false;
  Ref<Object> object = RuntimeNewObject<Derived>();
  auto base = RuntimeCheckCast<Base>(object);
  base->IsDestroyed = &isDestroyed;
  EXPECT_TRUE(base == object);
  EXPECT_THROW(RuntimeCheckCast<Other>(object), IllegalCastException);
  object = nullptr;
  EXPECT_FALSE(isDestroyed);
  base = nullptr;
  EXPECT_TRUE(isDestroyed);
}

TEST(Plugins, EachSlotHasTheEntryOfItsKey) {
  static int called = 0;
  RuntimePublishPluginEntrypoints({{"Shell.WriteLine(s as String)", +[](int) { called = 1; }},
                                   {"Shell.Write(s as String)", +[](int) { called = 2; }}});
  InitPluginEntrypoints();
  Glink<void(int)>(PluginSlotOf("Shell.WriteLine(s as String)"), 0);
  EXPECT_EQ(called, 1);
  Glink<void(int)>(PluginSlotOf("Shell.Write(s as String)"), 0);
  EXPECT_EQ(called, 2);
  EXPECT_THROW(Glink<void()>(PluginSlotOf("Shell.Poll")), FunctionNotFoundException);
}
