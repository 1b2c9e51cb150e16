#pragma once

#include <QString>

#include "platform/runtime/String.h"

namespace zelto {

// Converts a text for display. Replaces invalid bytes with U+FFFD, and a carriage return without a
// newline with a blank. Removes escape sequences, the byte order mark, bidirectional controls, and
// control characters except tabs and newlines.
QString ToDisplayText(const String& text);

// Converts a plain text for QToolTip, which could otherwise interpret the text as rich text.
QString ToolTip(const QString& text);

String FromQString(const QString& text);

}  // namespace zelto
