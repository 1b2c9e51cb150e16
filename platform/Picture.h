#pragma once

#include "platform/runtime/Object.h"

namespace zelto {

class Picture;

class Graphics : public Object {
 public:
  // In one of the four sizes: the picture's own width or height.
  static constexpr Int32 OwnSize = -10000;

  // Draws a part of the picture, in pixels. Nil draws nothing.
  virtual void DrawPicture(const Ref<Picture>& picture, Int32 x, Int32 y, Int32 width, Int32 height,
                           Int32 sourceX, Int32 sourceY, Int32 sourceWidth, Int32 sourceHeight) = 0;
};

class Picture : public Object {
 public:
  // The picture whose black shows this one and whose white hides it; nil when there is none and
  // none is to be made. A new one shows all.
  virtual Ref<Picture> Mask(bool create) = 0;
  // Draws on this picture.
  virtual Ref<class Graphics> Graphics() = 0;
};

}  // namespace zelto
