#pragma once

#include <QWidget>

#include "platform/runtime/String.h"

namespace zelto {

// Whether the editing command of the menu item has something to do in the field that has the
// focus. False for the name of any other item.
bool CanEdit(const String& itemName);
void Edit(const String& itemName);

// Remembers the field that has the focus for the time in which the menu bar has it.
void FollowEditing(QWidget& menuBar);

}  // namespace zelto
