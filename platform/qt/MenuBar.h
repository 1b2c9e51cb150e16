#pragma once

#include <QMenuBar>

#include "platform/Window.h"

namespace zelto {

// The widget of the window's menu bar.
QMenuBar* NewMenuBar(Window& window, const Ref<MenuBar>& bar);

}  // namespace zelto
