#pragma once

#include <QImage>

#include "platform/Picture.h"

namespace zelto {

// The picture with its mask applied.
QImage MaskedImage(const Picture& picture);

}  // namespace zelto
