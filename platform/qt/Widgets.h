#pragma once

#include <QWidget>

#include "platform/Toolkit.h"

namespace zelto {

// Makes the dialog a transient window of the parent.
void AttachTo(QWidget& dialog, WindowImp& parent);

}  // namespace zelto
