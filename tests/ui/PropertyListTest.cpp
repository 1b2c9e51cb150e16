#include <QCryptographicHash>

#include "platform/Control.h"
#include "tests/StubPrograms.h"
#include "ui/WAbout.h"
#include "ui/WPerm.h"
#include "ui/Window1.h"

using namespace zelto;
using namespace std::string_literals;

namespace {

// The checksum of the names and lists of the window and its controls, in their order.
template <class W>
std::string Checksum() {
  std::string text = Bytes(W::List());
  for (const auto& row : W::Controls()) text += Bytes(row.Name + row.List);
  const auto hash =
      QCryptographicHash::hash(QByteArray::fromStdString(text), QCryptographicHash::Sha256);
  return hash.toHex().left(16).toStdString();
}

}  // namespace

// Each changed value, order or text of a list changes the checksum.
TEST(PropertyLists, AreUnchanged) {
  EXPECT_EQ(Checksum<class Window1>(), "5056b518fd381e9a");
  EXPECT_EQ(Checksum<class WPerm>(), "c76dad5523e6638e");
  EXPECT_EQ(Checksum<class WAbout>(), "1a481599f8e5782f");
}

TEST(PropertyLists, AreEncodedInTheBinaryFormat) {
  EXPECT_EQ(Bytes(TimerList{.Mode = 2, .Period = 1000}), "Mode \0\0\0\2Period \0\0\3\xE8"s);
}

TEST(PropertyLists, SetTheValuesOfKeysInEitherCaseEvenIfNothingShowsThem) {
  const auto text = RuntimeNewObject<StaticText>();
  RuntimeMassPropertySetter(*text, "DATAfield \0\0\0\1xtabINDEX \1\1\1\1"s);
  EXPECT_EQ(Bytes(text->Properties().DataField), "x");
  EXPECT_EQ(text->Properties().TabIndex, 0x01010101);
}

TEST(PropertyLists, MalformedListsAreRefused) {
  for (const auto& list : {"Colour \0\0\0\1"s, "Enabled \2"s, "Text \0\0\0\5abcd"s,
                           "Text \xFF\xFF\xFF\xFF"s, "Left"s, " \0\0\0\1"s}) {
    const auto text = RuntimeNewObject<StaticText>();
    EXPECT_THROW(RuntimeMassPropertySetter(*text, "TabIndex \1\1\1\1" + list),
                 UnsupportedFormatException);
    EXPECT_EQ(text->Properties().TabIndex, 0) << "a part was applied: " << list;
  }
}
