#pragma once

#include <QString>

#include "platform/runtime/String.h"

namespace zelto {

// Converts a text for display. An invalid byte becomes U+FFFD, a carriage return a newline. Escape
// sequences and all control characters but tabs and newlines are removed.
QString ToDisplayText(const String& text);

// Converts a plain text for QToolTip, which otherwise can interpret it as rich text.
QString ToolTip(const QString& text);

String FromQString(const QString& text);

}  // namespace zelto
