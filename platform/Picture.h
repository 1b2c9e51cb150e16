#pragma once

#include "platform/runtime/Object.h"

namespace zelto {

class Picture;

class Graphics : public Object {
 public:
  // As a width or a height, this value tells DrawPicture to use that of the picture.
  static constexpr Int32 OwnSize = -10000;

  // Draws a part of the picture. All numbers are pixels. Does nothing if the picture is nil.
  virtual void DrawPicture(const Ref<Picture>& picture, Int32 x, Int32 y, Int32 width, Int32 height,
                           Int32 sourceX, Int32 sourceY, Int32 sourceWidth, Int32 sourceHeight) = 0;
};

class Picture : public Object {
 public:
  // The mask of this picture: black shows the picture, white hides it. If there is no mask, returns
  // a new black one if `create` is true, or else nil.
  virtual Ref<Picture> Mask(bool create) = 0;
  // A Graphics that draws on this picture.
  virtual Ref<class Graphics> Graphics() = 0;
};

}  // namespace zelto
