#include <gtest/gtest.h>

#include <QByteArray>
#include <QCryptographicHash>

#include "platform/Control.h"
#include "tests/StubPrograms.h"
#include "ui/WAbout.h"
#include "ui/WPerm.h"
#include "ui/Window1.h"

using namespace zelto;

namespace {

// The checksum of the names and lists of the window and its controls, in their order.
template <class W>
std::string Checksum() {
  QCryptographicHash hash(QCryptographicHash::Sha256);
  const auto add = [&](const String& text) {
    hash.addData(QByteArray::fromStdString(Bytes(text)));
  };
  add(W::List());
  for (const auto& row : W::Controls()) {
    add(row.Name);
    add(row.List);
  }
  return hash.result().toHex().left(16).toStdString();
}

std::string Hex(const String& list) {
  return QByteArray::fromStdString(Bytes(list)).toHex().toStdString();
}

}  // namespace

// Each changed value, order or text of a list changes the checksum.
TEST(PropertyLists, AreUnchanged) {
  EXPECT_EQ(Checksum<class Window1>(), "5056b518fd381e9a");
  EXPECT_EQ(Checksum<class WPerm>(), "c76dad5523e6638e");
  EXPECT_EQ(Checksum<class WAbout>(), "1a481599f8e5782f");
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

TEST(PropertyLists, KeysMatchInEitherCase) {
  const auto text = RuntimeNewObject<StaticText>();
  RuntimeMassPropertySetter(*text, "tabINDEX \1\1\1\1");
  EXPECT_EQ(text->Properties().TabIndex, 0x01010101);
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
