#include <qdrawutil.h>

#include <QMouseEvent>
#include <QPainter>

#include "platform/Application.h"
#include "platform/Control.h"
#include "platform/qt/ImagePicture.h"
#include "platform/qt/WidgetPane.h"

namespace zelto {

namespace {

class CanvasWidget : public QWidget {
 public:
  CanvasWidget(Canvas& canvas, QWidget* parent) : QWidget(parent), mCanvas(canvas) {}

  void Show(const QImage& backdrop) {
    mBackdrop = backdrop;
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (!mBackdrop.isNull()) painter.drawImage(QPoint(), mBackdrop);
    if (hasFocus() && mCanvas.Properties().UseFocusRing)
      qDrawPlainRect(&painter, rect(), palette().color(QPalette::Highlight));
  }

  void mousePressEvent(QMouseEvent* event) override {
    InvokeHandler(mCanvas, [&] { mIsClaimed = mCanvas.Raise("MouseDown", Place(*event)); });
    event->setAccepted(mIsClaimed);
  }

  void mouseReleaseEvent(QMouseEvent* event) override {
    if (!std::exchange(mIsClaimed, false)) return;
    InvokeHandler(mCanvas, [&] { mCanvas.Raise("MouseUp", Place(*event)); });
  }

 private:
  static Arguments Place(const QMouseEvent& event) {
    return {event.position().toPoint().x(), event.position().toPoint().y()};
  }

  Canvas& mCanvas;
  QImage mBackdrop;
  bool mIsClaimed = false;  // by the handler of MouseDown
};

class CanvasPane : public WidgetPane<Canvas, CanvasWidget> {
 public:
  CanvasPane(Canvas& canvas, CanvasWidget* widget) : WidgetPane(canvas, widget) {
    CanvasPane::Update();
  }

  void Update() override {
    WidgetPane::Update();
    // Without AcceptFocus a canvas does not take the focus, not even by Tab.
    const bool takesFocus = Properties().AcceptFocus;
    mWidget->setFocusPolicy(FocusPolicyOf(takesFocus && Properties().TabStop, takesFocus));
    mWidget->Show(mModel.Backdrop() ? MaskedImage(*mModel.Backdrop()) : QImage());
  }
};

}  // namespace

std::unique_ptr<Pane> NewPane(Canvas& canvas, WindowImp& window) {
  auto& top = TopLevelOf(window);
  auto* widget = new CanvasWidget(canvas, &top.Content());
  top.AddToTabOrder(*widget, canvas.Properties().TabIndex);
  return std::make_unique<CanvasPane>(canvas, widget);
}

}  // namespace zelto
