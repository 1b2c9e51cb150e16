#pragma once

#include <QPointer>

#include "platform/Toolkit.h"
#include "platform/qt/Balloon.h"
#include "platform/qt/Text.h"
#include "platform/qt/TopLevel.h"

namespace zelto {

QPalette PaletteOf(const QWidget& widget, Color text);
Qt::FocusPolicy FocusPolicyOf(bool tabStop, bool acceptFocus);
// 0 left, 1 centred, 2 right.
Qt::Alignment HorizontalAlignment(Int32 code);

// The desktop's font, changed only where the list requires another family, size or style.
template <class List>
QFont FontOf(const List& list) {
  QFont font;
  if (!list.TextFont.IsNil() && !(list.TextFont == "System")) {
    font.setFamily(ToDisplayText(list.TextFont));
  }
  if (list.TextSize > 0) font.setPixelSize(list.TextSize);
  if (list.Bold) font.setBold(true);
  if (list.Italic) font.setItalic(true);
  if (list.Underline) font.setUnderline(true);
  return font;
}

// The common part of all panes. The window's widget owns the pane's widget.
template <class Model, class Widget, class Interface = Pane>
class WidgetPane : public Interface {
 public:
  WidgetPane(Model& model, Widget* widget) : mModel(model), mWidget(widget) {}
  WidgetPane(const WidgetPane&) = delete;
  WidgetPane& operator=(const WidgetPane&) = delete;
  // Uses deleteLater, because the control can be closed by a handler of its own event.
  ~WidgetPane() override {
    if (!mWidget) return;
    mWidget->disconnect();
    mWidget->deleteLater();
  }

  void Update() override {
    const auto& list = Properties();
    mWidget->setObjectName(ToDisplayText(list.Name));
    mWidget->setGeometry(list.Left, list.Top, list.Width, list.Height);
    if constexpr (requires { list.TextFont; }) mWidget->setFont(FontOf(list));
    if constexpr (requires { list.TextColor; })
      mWidget->setPalette(PaletteOf(*mWidget, list.TextColor));
    mWidget->setToolTip(ToolTip(ToDisplayText(list.HelpTag)));
    mWidget->setEnabled(list.Enabled);
    mWidget->setVisible(list.Visible);
  }
  void SetLabel(const String& label) override { mWidget->setAccessibleName(ToDisplayText(label)); }
  void SetFocus() override { mWidget->setFocus(); }
  void Refresh() override { mWidget->repaint(); }
  void AcceptFileDrop(const String&) override {}
  void ShowBalloon(const String& text, BalloonEnd end) override {
    delete mBalloon;
    mBalloon = new Balloon(*mWidget, ToDisplayText(text), end);
  }

 protected:
  const auto& Properties() const { return mModel.Properties(); }

  Model& mModel;
  QPointer<Widget> mWidget;
  QPointer<Balloon> mBalloon;
};

}  // namespace zelto
