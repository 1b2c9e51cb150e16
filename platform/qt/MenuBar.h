#pragma once

#include <QMenuBar>

#include "platform/Window.h"

namespace zelto {

// Creates the widget of the window's menu bar. The window owns `context`. After `context` is
// destroyed, the widget no longer accesses the window.
QMenuBar* NewMenuBar(Window& window, const Ref<MenuBar>& bar, QObject& context);

}  // namespace zelto
