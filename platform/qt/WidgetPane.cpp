#include "platform/qt/WidgetPane.h"

#include "platform/qt/Text.h"

namespace zelto {

namespace {

// Only what differs from the desktop's own font.
QFont FontOf(const ControlState& state) {
  QFont font;
  if (!state.TextFont.IsNil() && !(state.TextFont == "System")) {
    font.setFamily(ToDisplayText(state.TextFont));
  }
  if (state.TextSize > 0) font.setPixelSize(state.TextSize);
  if (state.Bold) font.setBold(true);
  if (state.Italic) font.setItalic(true);
  if (state.Underline) font.setUnderline(true);
  return font;
}

// Black is the desktop's own colour of text, which on a dark desktop is light.
QPalette PaletteOf(const QWidget& widget, Color text) {
  QPalette palette;
  if (text == Color()) return palette;
  palette.setColor(widget.foregroundRole(), QColor(text.Red, text.Green, text.Blue));
  return palette;
}

Qt::FocusPolicy FocusPolicyOf(const ControlState& state) {
  if (state.TabStop) return state.AcceptFocus ? Qt::StrongFocus : Qt::TabFocus;
  return state.AcceptFocus ? Qt::ClickFocus : Qt::NoFocus;
}

}  // namespace

void UpdateWidget(QWidget& widget, const ControlState& state) {
  widget.setObjectName(ToDisplayText(state.Name));
  widget.setAccessibleName(ToDisplayText(state.Label));
  widget.setGeometry(state.Left, state.Top, state.Width, state.Height);
  widget.setFocusPolicy(FocusPolicyOf(state));
  widget.setFont(FontOf(state));
  widget.setPalette(PaletteOf(widget, state.TextColor));
  widget.setToolTip(ToolTip(ToDisplayText(state.HelpTag)));
  widget.setEnabled(state.Enabled);
  widget.setVisible(state.Visible);
}

Qt::Alignment HorizontalAlignment(Int32 code) {
  if (code == 1) return Qt::AlignHCenter;
  return code == 2 ? Qt::AlignRight : Qt::AlignLeft;
}

}  // namespace zelto
