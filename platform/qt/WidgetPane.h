#pragma once

#include <QPointer>

#include "platform/Toolkit.h"
#include "platform/qt/TopLevel.h"

namespace zelto {

TopLevel& TopLevelOf(WindowImp& window);

// Gives the widget the properties that all controls have.
void UpdateWidget(QWidget& widget, const ControlState& state);

// 0 left, 1 centred, 2 right.
Qt::Alignment HorizontalAlignment(Int32 code);

// The part of a pane that is the same for all of them. The widget belongs to its window.
template <class Interface>
class WidgetPane : public Interface {
 public:
  WidgetPane(QWidget* widget, const ControlState& state) : mWidget(widget), mState(state) {}
  WidgetPane(const WidgetPane&) = delete;
  WidgetPane& operator=(const WidgetPane&) = delete;
  // Later, since the control may be closed by a handler of its own event.
  ~WidgetPane() override {
    if (!mWidget) return;
    mWidget->disconnect();
    mWidget->deleteLater();
  }

  void Update() override { UpdateWidget(*mWidget, mState); }
  void SetFocus() override { mWidget->setFocus(); }
  void Refresh() override { mWidget->repaint(); }
  void AcceptFileDrop(const String&) override {}

 private:
  QPointer<QWidget> mWidget;
  const ControlState& mState;
};

}  // namespace zelto
