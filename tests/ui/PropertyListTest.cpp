#include <gtest/gtest.h>

#include <QByteArray>

#include "platform/Control.h"
#include "tests/StubPrograms.h"
#include "ui/WAbout.h"
#include "ui/WPerm.h"
#include "ui/Window1.h"

using namespace zelto;

namespace {

template <class W>
void AddSizes(std::vector<int>& sizes) {
  sizes.push_back(LenB(W::List()));
  for (const auto& row : W::Controls()) sizes.push_back(LenB(row.List));
}

std::string Hex(const String& list) {
  return QByteArray::fromStdString(Bytes(list)).toHex().toStdString();
}

}  // namespace

TEST(PropertyLists, HaveTheExpectedSizes) {
  // The legal notice of the About window is the only text that changes, so its size is computed.
  const int notice = LenB("© 2026 ZELTO Group. All rights reserved.");
  std::vector<int> sizes;
  AddSizes<class Window1>(sizes);
  AddSizes<class WPerm>(sizes);
  AddSizes<class WAbout>(sizes);
  EXPECT_EQ(sizes,
            (std::vector<int>{293, 495, 449, 299, 303,          446, 266, 340, 495, 348,
                              346, 336, 346, 336,                                        // Window1
                              279, 493, 491, 312, 343,          357, 429, 306, 266, 20,  // WPerm
                              272, 266, 364, 345, 338 + notice, 266}));                  // WAbout
}

TEST(PropertyLists, AreEncodedInTheBinaryFormat) {
  EXPECT_EQ(Hex(TimerList{.Mode = 2, .Period = 1000}), "4d6f64652000000002506572696f6420000003e8");
  EXPECT_NE(Hex(Window1::List()).find("4261636b436f6c6f7220ffffff"), std::string::npos);
}

TEST(PropertyLists, ValuesThatNothingShowsAreStored) {
  const auto text = RuntimeNewObject<StaticText>();
  RuntimeMassPropertySetter(*text, StaticTextList{.LockBottom = true, .DataField = "x"});
  EXPECT_TRUE(text->Properties().LockBottom);
  EXPECT_EQ(Bytes(text->Properties().DataField), "x");
}

TEST(PropertyLists, MalformedListsAreRefused) {
  using namespace std::string_literals;
  for (const auto& list : {"Colour \0\0\0\1"s, "Enabled \2"s, "Text \0\0\0\5abcd"s,
                           "Text \xFF\xFF\xFF\xFF"s, "Left"s, " \0\0\0\1"s}) {
    const auto text = RuntimeNewObject<StaticText>();
    EXPECT_THROW(RuntimeMassPropertySetter(*text, "TabIndex \1\1\1\1" + list),
                 UnsupportedFormatException)
        << list;
    EXPECT_EQ(text->Properties().TabIndex, 0)  // nothing of the list is applied
        << list;
  }
}
