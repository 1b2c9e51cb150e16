#include <gtest/gtest.h>

#include "platform/PropertyLists.h"
#include "tests/Programs.h"
#include "ui/WAbout.h"
#include "ui/WPerm.h"
#include "ui/Window1.h"

using namespace zelto;

namespace {

struct NamedList {
  std::string Name;
  String List;
  const Class* Of;
};

const Class& ClassOfRow(const ControlRow& row) {
  const std::pair<Ref<Object> (*)(Window&), const Class*> classes[] = {
      {CreateControl<EditField>, &EditField::ClassTable()},
      {CreateControl<StaticText>, &StaticText::ClassTable()},
      {CreateControl<PushButton>, &PushButton::ClassTable()},
      {CreateControl<BevelButton>, &BevelButton::ClassTable()},
      {CreateControl<Canvas>, &Canvas::ClassTable()}};
  for (const auto& [create, table] : classes) {
    if (row.Create == create) return *table;
  }
  return Timer::ClassTable();
}

template <class W>
void AddLists(std::vector<NamedList>& lists) {
  const std::string window = Bytes(W::ClassTable().Name());
  lists.push_back({window, W::List(), &W::ClassTable()});
  for (const auto& row : W::Controls()) {
    lists.push_back({window + " " + Bytes(row.Name), row.List, &ClassOfRow(row)});
  }
}

std::vector<NamedList> AllLists() {
  std::vector<NamedList> lists;
  AddLists<class Window1>(lists);
  AddLists<class WPerm>(lists);
  AddLists<class WAbout>(lists);
  return lists;
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

TEST(PropertyLists, HaveTheirSizes) {
  // The legal notice of the About window is the one text that is free; its bytes come on top.
  const int notice = LenB("Copyright © 2026 ZELTO Group. All rights reserved.");
  std::vector<int> sizes;
  for (const auto& each : AllLists()) sizes.push_back(LenB(each.List));
  EXPECT_EQ(sizes,
            (std::vector<int>{293, 495, 449, 299, 303,          446, 266, 340, 495, 348,
                              346, 336, 346, 336,                                        // Window1
                              279, 493, 491, 312, 343,          357, 429, 306, 266, 20,  // WPerm
                              272, 266, 364, 345, 338 + notice, 266}));                  // WAbout
}

TEST(PropertyLists, AreTheBytesOfTheFormat) {
  EXPECT_EQ(Hex(Bytes(TimerList{.Mode = 2, .Period = 1000})),
            "4D6F64652000000002506572696F6420000003E8");
  const auto holds = [](const std::string& name, const std::string& hex) {
    for (const auto& each : AllLists()) {
      if (each.Name == name) return Hex(Bytes(each.List)).find(hex) != std::string::npos;
    }
    return false;
  };
  EXPECT_TRUE(holds("Window1.Window1 pbTest", "43617074696F6E200000000454657374"));
  EXPECT_TRUE(holds("Window1.Window1 pbTest", "44656661756C742000"));
  EXPECT_TRUE(holds("Window1.Window1 pbTest", "48656C705461672000000000"));
  EXPECT_TRUE(holds("Window1.Window1 pbTest", "496E6465782080000000"));
  EXPECT_TRUE(holds("Window1.Window1", "4261636B436F6C6F7220FFFFFF"));
}

TEST(PropertyLists, SurviveDecodingAndEncoding) {
  for (const auto& each : AllLists()) {
    const auto entries = DecodePropertyList(each.List, each.Of->Properties());
    EXPECT_EQ(entries.size(), each.Of->Properties().size()) << each.Name;
    EXPECT_EQ(Bytes(EncodePropertyList(entries)), Bytes(each.List)) << each.Name;
  }
}

TEST(PropertyLists, ThatAreNoneAreRefused) {
  for (const auto& each : AllLists()) {
    const std::string list = Bytes(each.List);
    // A cut between two entries leaves a list; every other one does not.
    std::size_t whole = 0;
    std::string rest;
    for (const auto& entry : DecodePropertyList(list, each.Of->Properties())) {
      const std::size_t next = whole + Bytes(EncodePropertyList({entry})).size();
      for (std::size_t cut = whole + 1; cut < next; ++cut) {
        EXPECT_TRUE(IsRefused(list.substr(0, cut), *each.Of)) << each.Name << " cut at " << cut;
      }
      whole = next;
    }
    EXPECT_TRUE(IsRefused(list + std::string("Colour \0\0\0\1", 11), *each.Of)) << each.Name;
  }
  using namespace std::string_literals;
  const Class& field = EditField::ClassTable();
  EXPECT_TRUE(IsRefused("Enabled \2"s, field));
  EXPECT_TRUE(IsRefused("Text \0\0\0\5abcd"s, field));
  EXPECT_TRUE(IsRefused("Text \xFF\xFF\xFF\xFF"s, field));
  EXPECT_TRUE(IsRefused("Left"s, field));
  EXPECT_TRUE(IsRefused(" \0\0\0\1"s, field));
}

TEST(PropertyLists, MatchKeysWithoutRegardToCase) {
  using namespace std::string_literals;
  const auto entries =
      DecodePropertyList("MULTILINE \1tEXT \0\0\0\2a "s, EditField::ClassTable().Properties());
  ASSERT_EQ(entries.size(), 2U);
  EXPECT_TRUE(std::get<bool>(entries[0].Value));
  EXPECT_EQ(Bytes(entries[0].Key), "Multiline");
  EXPECT_EQ(Bytes(std::get<String>(entries[1].Value)), "a ");
}
