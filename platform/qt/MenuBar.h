#pragma once

#include <QMenuBar>

#include "platform/Window.h"

namespace zelto {

// Creates the widget of the window's menu bar. The widget can outlive the window: it does not
// access the window after `context` is destroyed.
QMenuBar* NewMenuBar(Window& window, const Ref<MenuBar>& bar, QObject& context);

}  // namespace zelto
