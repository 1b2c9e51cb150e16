#pragma once

#include <QWidget>

#include "platform/Toolkit.h"

namespace zelto {

// Keeps the dialog above the parent.
void AttachTo(QWidget& dialog, WindowImp& parent);

}  // namespace zelto
