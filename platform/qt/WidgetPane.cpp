#include "platform/qt/WidgetPane.h"

#include <map>
#include <string_view>

#include "platform/qt/Text.h"

namespace zelto {

namespace {

using Effect = void (*)(QWidget&, const PropertyValue&);

int Pixels(const PropertyValue& value) { return std::get<Int32>(value); }

bool IsOn(const PropertyValue& value) { return std::get<bool>(value); }

template <class Change>
void ChangeFont(QWidget& widget, Change change) {
  QFont font = widget.font();
  change(font);
  widget.setFont(font);
}

// 0 names no size.
void SetTextSize(QWidget& widget, int size) {
  if (size > 0) ChangeFont(widget, [=](QFont& font) { font.setPixelSize(size); });
}

void SetTextFont(QWidget& widget, const String& family) {
  if (family == "System") return;
  ChangeFont(widget, [&](QFont& font) { font.setFamily(ToDisplayText(family)); });
}

// Black is the desktop's own colour of text, which on a dark desktop is light.
void SetTextColor(QWidget& widget, Color color) {
  if (color.Red == 0 && color.Green == 0 && color.Blue == 0) return;
  QPalette palette = widget.palette();
  palette.setColor(widget.foregroundRole(), QColor(color.Red, color.Green, color.Blue));
  widget.setPalette(palette);
}

void SetTabStop(QWidget& widget, bool isStop) {
  const auto policy = isStop ? widget.focusPolicy() | Qt::TabFocus
                             : widget.focusPolicy() & ~Qt::FocusPolicy(Qt::TabFocus);
  widget.setFocusPolicy(static_cast<Qt::FocusPolicy>(int(policy)));
}

const std::map<std::string_view, Effect>& Effects() {
  static const std::map<std::string_view, Effect> effects{
      {"Name", [](QWidget& w,
                  const PropertyValue& v) { w.setObjectName(ToDisplayText(std::get<String>(v))); }},
      {"Left", [](QWidget& w, const PropertyValue& v) { w.move(Pixels(v), w.y()); }},
      {"Top", [](QWidget& w, const PropertyValue& v) { w.move(w.x(), Pixels(v)); }},
      {"Width", [](QWidget& w, const PropertyValue& v) { w.resize(Pixels(v), w.height()); }},
      {"Height", [](QWidget& w, const PropertyValue& v) { w.resize(w.width(), Pixels(v)); }},
      {"TabIndex",
       [](QWidget& w, const PropertyValue& v) { w.setProperty("TabIndex", Pixels(v)); }},
      {"TabStop", [](QWidget& w, const PropertyValue& v) { SetTabStop(w, IsOn(v)); }},
      {"Enabled", [](QWidget& w, const PropertyValue& v) { w.setEnabled(IsOn(v)); }},
      {"Visible", [](QWidget& w, const PropertyValue& v) { w.setVisible(IsOn(v)); }},
      {"HelpTag",
       [](QWidget& w, const PropertyValue& v) {
         w.setToolTip(ToolTip(ToDisplayText(std::get<String>(v))));
       }},
      {"TextFont", [](QWidget& w, const PropertyValue& v) { SetTextFont(w, std::get<String>(v)); }},
      {"TextSize", [](QWidget& w, const PropertyValue& v) { SetTextSize(w, Pixels(v)); }},
      {"Bold",
       [](QWidget& w, const PropertyValue& v) {
         ChangeFont(w, [&](QFont& font) { font.setBold(IsOn(v)); });
       }},
      {"TextColor",
       [](QWidget& w, const PropertyValue& v) { SetTextColor(w, std::get<Color>(v)); }},
      {"Italic",
       [](QWidget& w, const PropertyValue& v) {
         ChangeFont(w, [&](QFont& font) { font.setItalic(IsOn(v)); });
       }},
      {"Underline",
       [](QWidget& w, const PropertyValue& v) {
         ChangeFont(w, [&](QFont& font) { font.setUnderline(IsOn(v)); });
       }},
  };
  return effects;
}

}  // namespace

void SetWidgetProperty(QWidget& widget, const String& name, const PropertyValue& value) {
  const auto effect = Effects().find(name.Bytes());
  if (effect != Effects().end()) effect->second(widget, value);
}

}  // namespace zelto
