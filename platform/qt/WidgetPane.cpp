#include "platform/qt/WidgetPane.h"

#include <QFontInfo>

namespace zelto {

// Black is the default and means the desktop's text colour, which is light on a dark desktop.
QPalette PaletteOf(const QWidget& widget, Color text) {
  QPalette palette;
  if (text == Color()) return palette;
  palette.setColor(widget.foregroundRole(), QColor(text.Red, text.Green, text.Blue));
  return palette;
}

Qt::FocusPolicy FocusPolicyOf(bool tabStop, bool acceptFocus) {
  if (tabStop) return acceptFocus ? Qt::StrongFocus : Qt::TabFocus;
  return acceptFocus ? Qt::ClickFocus : Qt::NoFocus;
}

Qt::Alignment HorizontalAlignment(Int32 code) {
  if (code == 1) return Qt::AlignHCenter;
  return code == 2 ? Qt::AlignRight : Qt::AlignLeft;
}

QFont FittedFont(const QFont& font, const QString& text, QSize space, int textFlags) {
  constexpr int smallest = 9;  // pixels
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
