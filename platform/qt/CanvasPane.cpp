#include <qdrawutil.h>

#include <QMouseEvent>
#include <QPainter>

#include "platform/Application.h"
#include "platform/Control.h"
#include "platform/qt/Picture.h"
#include "platform/qt/WidgetPane.h"

namespace zelto {

namespace {

class CanvasWidget : public QWidget {
 public:
  CanvasWidget(Canvas& canvas, const CanvasState& state, QWidget* parent)
      : QWidget(parent), mCanvas(canvas), mState(state) {}

  void Show(const QImage& backdrop) {
    mBackdrop = backdrop;
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (!mBackdrop.isNull()) painter.drawImage(QPoint(), mBackdrop);
    if (hasFocus() && mState.UseFocusRing) qDrawPlainRect(&painter, rect(), FocusColor());
  }

  void mousePressEvent(QMouseEvent* event) override {
    const Ref<Canvas> alive(&mCanvas);
    bool isClaimed = false;
    InvokeHandler([&] { isClaimed = alive->Raise("MouseDown", Place(*event)); });
    event->setAccepted(isClaimed);
  }

  void mouseReleaseEvent(QMouseEvent* event) override {
    const Ref<Canvas> alive(&mCanvas);
    InvokeHandler([&] { alive->Raise("MouseUp", Place(*event)); });
  }

 private:
  static Arguments Place(const QMouseEvent& event) {
    return {event.position().toPoint().x(), event.position().toPoint().y()};
  }

  QColor FocusColor() const { return palette().color(QPalette::Highlight); }

  Canvas& mCanvas;
  const CanvasState& mState;
  QImage mBackdrop;
};

class CanvasPane : public WidgetPane<Pane> {
 public:
  CanvasPane(const CanvasState& state, CanvasWidget* widget)
      : WidgetPane(widget, state), mState(state), mWidget(*widget) {
    CanvasPane::Update();
  }

  void Update() override {
    WidgetPane::Update();
    // Without AcceptFocus a canvas takes no focus, also by Tab.
    if (!mState.AcceptFocus) mWidget.setFocusPolicy(Qt::NoFocus);
    mWidget.Show(mState.Backdrop ? MaskedImage(*mState.Backdrop) : QImage());
  }

 private:
  const CanvasState& mState;
  CanvasWidget& mWidget;
};

}  // namespace

std::unique_ptr<Pane> NewCanvasPane(Canvas& canvas, const CanvasState& state, WindowImp& window) {
  auto& top = TopLevelOf(window);
  auto* widget = new CanvasWidget(canvas, state, &top.Content());
  top.AddToTabOrder(*widget, state.TabIndex);
  return std::make_unique<CanvasPane>(state, widget);
}

}  // namespace zelto
