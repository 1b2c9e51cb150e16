#include "ui/Pictures.h"

#include "platform/Toolkit.h"

namespace zelto {

namespace {

using Getter = Ref<Picture> (*)();

// If the mask cannot be loaded, the picture remains without one.
Ref<Picture> Loaded(Ref<Picture>& pic, const char* fileName, Getter mask = nullptr) {
  if (pic) return pic;
  const auto resources = GetApplicationBundleResources();
  if (!resources) return nullptr;
  pic = resources->Child(fileName)->OpenAsPicture();
  if (pic && mask) {
    constexpr Int32 own = Graphics::OwnSize;
    pic->Mask(true)->Graphics()->DrawPicture(mask(), 0, 0, own, own, 0, 0, own, own);
  }
  return pic;
}

}  // namespace

Ref<Picture> x_MacBGrayscale48x48::MacBGrayscale48x48() {
  static Ref<Picture> pic;
  return Loaded(pic, "MacBGrayscale48x48.png", x_LE_48x48_mask::LE_48x48_mask);
}

Ref<Picture> x_LE_48x48_mask::LE_48x48_mask() {
  static Ref<Picture> pic;
  return Loaded(pic, "LE_48x48_mask.png");
}

Ref<Picture> x_CircleB128x128WhiteBack::CircleB128x128WhiteBack() {
  static Ref<Picture> pic;
  return Loaded(pic, "CircleB128x128WhiteBack.gif",
                x_CircleB128x128MaskWhiteBack::CircleB128x128MaskWhiteBack);
}

Ref<Picture> x_CircleB128x128MaskWhiteBack::CircleB128x128MaskWhiteBack() {
  static Ref<Picture> pic;
  return Loaded(pic, "CircleB128x128MaskWhiteBack.gif");
}

Ref<FolderItem> GetApplicationBundleResources() {
  return AppFolderItemGetter()->Parent()->Parent()->Child("Resources");
}

}  // namespace zelto
