#pragma once

#include <QImage>

#include "platform/Picture.h"

namespace zelto {

QImage MaskedImage(const Picture& picture);

}  // namespace zelto
