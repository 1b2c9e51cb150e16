#pragma once

#include <QPointer>
#include <QWidget>

#include "platform/Toolkit.h"
#include "platform/qt/Text.h"

namespace zelto {

// The window's ground, which the controls' widgets lie on.
QWidget* ContentOf(WindowImp& window);

// What the properties that all controls have do to a widget. The others mean nothing here.
void SetWidgetProperty(QWidget& widget, const String& name, const PropertyValue& value);

// The part of a pane that is the same for all of them. The widget belongs to its window.
template <class Interface>
class WidgetPane : public Interface {
 public:
  explicit WidgetPane(QWidget* widget) : mWidget(widget) {}
  WidgetPane(const WidgetPane&) = delete;
  WidgetPane& operator=(const WidgetPane&) = delete;
  // Later, since the control may be closed by a handler of its own event.
  ~WidgetPane() override {
    if (!mWidget) return;
    mWidget->disconnect();
    mWidget->deleteLater();
  }

  void SetProperty(const String& name, const PropertyValue& value) override {
    SetWidgetProperty(*mWidget, name, value);
  }
  void SetLabel(const String& label) override { mWidget->setAccessibleName(ToDisplayText(label)); }
  bool Enabled() const override { return mWidget->isEnabledTo(nullptr); }
  bool Visible() const override { return !mWidget->isHidden(); }
  void SetFocus() override { mWidget->setFocus(); }
  void Refresh() override { mWidget->repaint(); }
  void AcceptFileDrop(const String&) override {}

 protected:
  void Replace(QWidget* widget) {
    widget->setGeometry(mWidget->geometry());
    widget->setFont(mWidget->font());
    widget->setFocusPolicy(mWidget->focusPolicy());
    delete mWidget;
    mWidget = widget;
  }
  QWidget& Widget() const { return *mWidget; }

 private:
  QPointer<QWidget> mWidget;
};

}  // namespace zelto
