#include "platform/qt/FittedText.h"

#include <QFontInfo>
#include <QFontMetrics>
#include <QRect>

namespace zelto {

QFont FittedFont(const QFont& font, const QString& text, QSize space, int textFlags) {
  constexpr int smallest = 7;  // pixels
  const auto fits = [&](const QFont& candidate) {
    // Wraps the text at the width of the space. Text without wrapping is measured on one line.
    const QRect bounds(0, 0, textFlags & Qt::TextWordWrap ? space.width() : 0, 0);
    const QSize needed = QFontMetrics(candidate).boundingRect(bounds, textFlags, text).size();
    return needed.width() <= space.width() && needed.height() < space.height();
  };
  QFont fitted = font;
  for (int size = QFontInfo(font).pixelSize(); size > smallest && !fits(fitted);) {
    fitted.setPixelSize(--size);
  }
  return fitted;
}

}  // namespace zelto
