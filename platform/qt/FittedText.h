#pragma once

#include <QFont>
#include <QSize>
#include <QString>

namespace zelto {

// The font, set smaller if the text needs it to fit into the space, in pixels. A text that does not
// fit at the smallest readable size gets that size.
QFont FittedFont(const QFont& font, const QString& text, QSize space, int textFlags);

}  // namespace zelto
