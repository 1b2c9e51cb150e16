#include <cstdlib>

#include "platform/PropertyLists.h"
#include "platform/Window.h"

using namespace zelto;

// The decoder refuses a list or returns its entries. Encoding the entries gives a list of the same
// length, and decoding and encoding that list changes nothing.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  static const std::vector<Property> classes[] = {
      WindowList::Schema(),     EditFieldList::Schema(),  BevelButtonList::Schema(),
      PushButtonList::Schema(), StaticTextList::Schema(), CanvasList::Schema(),
      TimerList::Schema()};
  if (size == 0) return 0;
  const auto& declared = classes[data[0] % 7];
  const String list = std::string_view(reinterpret_cast<const char*>(data) + 1, size - 1);
  try {
    const String anew = EncodePropertyList(DecodePropertyList(list, declared));
    if (LenB(anew) != LenB(list)) std::abort();
    if (EncodePropertyList(DecodePropertyList(anew, declared)).Bytes() != anew.Bytes())
      std::abort();
  } catch (const UnsupportedFormatException&) {
  }
  return 0;
}
