#pragma once

#include <QFont>
#include <QSize>
#include <QString>

namespace zelto {

// Returns the font, reduced until the text fits into the space (in pixels) or the smallest readable
// size is reached.
QFont FittedFont(const QFont& font, const QString& text, QSize space, int textFlags);

}  // namespace zelto
