#include "ui/Pictures.h"

#include "platform/Toolkit.h"

namespace zelto {

namespace {

using Getter = Ref<Picture> (*)();

Ref<Picture> Load(const char* fileName, Getter mask) {
  const auto resources = GetApplicationBundleResources();
  if (!resources) return nullptr;
  auto picture = resources->Child(fileName)->OpenAsPicture();
  if (picture && mask) {
    constexpr Int32 own = Graphics::OwnSize;
    picture->Mask(true)->Graphics()->DrawPicture(mask(), 0, 0, own, own, 0, 0, own, own);
  }
  return picture;
}

}  // namespace

Ref<Picture> x_MacBGrayscale48x48::MacBGrayscale48x48() {
  static Ref<Picture> pic;
  if (!pic) pic = Load("MacBGrayscale48x48.png", x_LE_48x48_mask::LE_48x48_mask);
  return pic;
}

Ref<Picture> x_LE_48x48_mask::LE_48x48_mask() {
  static Ref<Picture> pic;
  if (!pic) pic = Load("LE_48x48_mask.png", nullptr);
  return pic;
}

Ref<Picture> x_CircleB128x128WhiteBack::CircleB128x128WhiteBack() {
  static Ref<Picture> pic;
  if (!pic) {
    pic = Load("CircleB128x128WhiteBack.gif",
               x_CircleB128x128MaskWhiteBack::CircleB128x128MaskWhiteBack);
  }
  return pic;
}

Ref<Picture> x_CircleB128x128MaskWhiteBack::CircleB128x128MaskWhiteBack() {
  static Ref<Picture> pic;
  if (!pic) pic = Load("CircleB128x128MaskWhiteBack.gif", nullptr);
  return pic;
}

Ref<FolderItem> GetApplicationBundleResources() {
  return AppFolderItemGetter()->Parent()->Parent()->Child("Resources");
}

}  // namespace zelto
