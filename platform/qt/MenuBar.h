#pragma once

#include <QMenuBar>

#include "platform/Window.h"

namespace zelto {

// Creates the widget of the window's menu bar. It accesses the window until `context` is destroyed.
QMenuBar* NewMenuBar(Window& window, const Ref<MenuBar>& bar, QObject& context);

}  // namespace zelto
