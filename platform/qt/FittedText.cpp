#include "platform/qt/FittedText.h"

#include <QFontInfo>
#include <QFontMetrics>
#include <QTextBoundaryFinder>

namespace zelto {

namespace {

// Wraps the text at the width of the space. Text without wrapping is measured on one line.
bool Fits(const QFont& font, const QString& text, QSize space, int textFlags) {
  const QRect bounds(0, 0, textFlags & Qt::TextWordWrap ? space.width() : 0, 0);
  const QSize needed = QFontMetrics(font).boundingRect(bounds, textFlags, text).size();
  return needed.width() <= space.width() && needed.height() < space.height();
}

QString Shortened(const QFont& font, const QString& text, QSize space, int textFlags) {
  if (!(textFlags & Qt::TextWordWrap)) {
    return QFontMetrics(font).elidedText(text, Qt::ElideRight, space.width(), textFlags);
  }
  QTextBoundaryFinder character(QTextBoundaryFinder::Grapheme, text);
  const auto shortened = [&](qsizetype length) {
    character.setPosition(length);
    if (!character.isAtBoundary()) length = character.toPreviousBoundary();
    return text.left(length) + QChar(0x2026);
  };
  qsizetype fitting = 0;
  for (qsizetype excess = text.size(); excess - fitting > 1;) {
    const qsizetype middle = (fitting + excess) / 2;
    (Fits(font, shortened(middle), space, textFlags) ? fitting : excess) = middle;
  }
  return shortened(fitting);
}

}  // namespace

FittedText Fit(const QFont& font, const QString& text, QSize space, int textFlags) {
  constexpr int smallest = 9;  // pixels
  QFont fitted = font;
  for (int size = QFontInfo(font).pixelSize();
       size > smallest && !Fits(fitted, text, space, textFlags);) {
    fitted.setPixelSize(--size);
  }
  if (Fits(fitted, text, space, textFlags)) return {fitted, text};
  return {fitted, Shortened(fitted, text, space, textFlags)};
}

}  // namespace zelto
