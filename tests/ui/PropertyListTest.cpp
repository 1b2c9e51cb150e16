#include <gtest/gtest.h>

#include "platform/PropertyLists.h"
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

std::string Hex(const std::string& bytes) {
  std::string hex;
  for (const unsigned char byte : bytes) {
    constexpr char digits[] = "0123456789ABCDEF";
    (hex += digits[byte >> 4]) += digits[byte & 15];
  }
  return hex;
}

bool IsRefused(const std::string& list, const Class& of) {
  try {
    DecodePropertyList(list, of.Properties());
    return false;
  } catch (const UnsupportedFormatException&) {
    return true;
  }
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
  EXPECT_EQ(Hex(Bytes(TimerList{.Mode = 2, .Period = 1000})),
            "4D6F64652000000002506572696F6420000003E8");
  const std::string button = Hex(Bytes(Window1::Controls()[2].List));
  for (const char* const entry : {"43617074696F6E200000000454657374", "44656661756C742000",
                                  "48656C705461672000000000", "496E6465782080000000"}) {
    EXPECT_NE(button.find(entry), std::string::npos) << entry;
  }
  EXPECT_NE(Hex(Bytes(Window1::List())).find("4261636B436F6C6F7220FFFFFF"), std::string::npos);
}

TEST(PropertyLists, MalformedListsAreRefused) {
  const std::string list = Bytes(Window1::List());
  EXPECT_TRUE(IsRefused(list.substr(0, list.size() - 1), Window::ClassTable()));
  using namespace std::string_literals;
  const Class& field = EditField::ClassTable();
  EXPECT_TRUE(IsRefused("Colour \0\0\0\1"s, field));
  EXPECT_TRUE(IsRefused("Enabled \2"s, field));
  EXPECT_TRUE(IsRefused("Text \0\0\0\5abcd"s, field));
  EXPECT_TRUE(IsRefused("Text \xFF\xFF\xFF\xFF"s, field));
  EXPECT_TRUE(IsRefused("Left"s, field));
  EXPECT_TRUE(IsRefused(" \0\0\0\1"s, field));
}

TEST(PropertyLists, MatchKeysCaseInsensitively) {
  using namespace std::string_literals;
  const auto entries =
      DecodePropertyList("MULTILINE \1tEXT \0\0\0\2a "s, EditField::ClassTable().Properties());
  ASSERT_EQ(entries.size(), 2U);
  EXPECT_TRUE(std::get<bool>(entries[0].Value));
  EXPECT_EQ(entries[0].Key, "Multiline");
  EXPECT_EQ(Bytes(std::get<String>(entries[1].Value)), "a ");
}
