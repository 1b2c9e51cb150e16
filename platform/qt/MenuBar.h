#pragma once

#include <QMenuBar>

#include "platform/Window.h"

namespace zelto {

// The widget of the window's menu bar. It outlives the window by a moment; nothing reaches the
// window from it once `context`, which is the window's, has ended.
QMenuBar* NewMenuBar(Window& window, const Ref<MenuBar>& bar, QObject& context);

}  // namespace zelto
