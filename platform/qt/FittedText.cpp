#include "platform/qt/FittedText.h"

#include <QFontInfo>
#include <QFontMetrics>
#include <QRect>

namespace zelto {

QFont FittedFont(const QFont& font, const QString& text, QSize space, int textFlags) {
  constexpr int smallest = 7;  // pixels
  const auto fits = [&](const QFont& candidate) {
    // Wrapped text is laid out in the width of the space. Other text has no limit.
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
