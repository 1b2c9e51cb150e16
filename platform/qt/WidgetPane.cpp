#include "platform/qt/WidgetPane.h"

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

}  // namespace zelto
