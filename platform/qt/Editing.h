#pragma once

#include <QWidget>
#include <functional>

#include "platform/runtime/String.h"

namespace zelto {

// Returns whether the item has an editing command that applies to the focused field.
bool CanEdit(const String& itemName);
void Edit(const String& itemName);

// Calls `changed` when a result of CanEdit can have changed, until `context` is destroyed. While
// the menu bar has the focus, the commands apply to the field that had it before.
void FollowEditing(QObject& context, const std::function<void()>& changed);

}  // namespace zelto
