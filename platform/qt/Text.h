#pragma once

#include <QString>

#include "platform/runtime/String.h"

namespace zelto {

// The text as a person sees it: a byte that is not UTF-8 is U+FFFD, a carriage return is a newline,
// and of all other control characters and escape sequences only tabs are left.
QString ToDisplayText(const String& text);

// The text for a tool tip, which would take some plain texts for rich ones.
QString ToolTip(const QString& text);

String FromQString(const QString& text);

}  // namespace zelto
