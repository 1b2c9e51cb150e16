#pragma once

#include <QWidget>
#include <functional>

#include "platform/runtime/String.h"

namespace zelto {

// Whether the editing command of the menu item has something to do in the field that has the
// focus. False for the name of any other item.
bool CanEdit(const String& itemName);
void Edit(const String& itemName);

// Calls back whenever the answers of CanEdit may have changed, for as long as `context` lives. The
// field that has the focus is remembered for the time in which a menu bar has it.
void FollowEditing(QObject& context, const std::function<void()>& changed);

}  // namespace zelto
