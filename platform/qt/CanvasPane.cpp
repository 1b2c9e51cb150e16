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
  CanvasWidget(Canvas& canvas, QWidget* parent) : QWidget(parent), mCanvas(canvas) {
    setFocusPolicy(Qt::NoFocus);
  }

  void Show(const Ref<Picture>& picture) {
    mBackdrop = picture ? MaskedImage(*picture) : QImage();
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (!mBackdrop.isNull()) painter.drawImage(QPoint(), mBackdrop);
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

  Canvas& mCanvas;
  QImage mBackdrop;
};

class CanvasPaneImp : public WidgetPane<CanvasPane> {
 public:
  explicit CanvasPaneImp(CanvasWidget* ground) : WidgetPane(ground), mGround(*ground) {}

  // Without AcceptFocus a canvas takes no focus, also by Tab.
  void SetProperty(const String& name, const PropertyValue& value) override {
    if (name == "TabStop") return;
    if (name == "AcceptFocus" && std::get<bool>(value)) mGround.setFocusPolicy(Qt::StrongFocus);
    WidgetPane::SetProperty(name, value);
  }

  void SetBackdrop(const Ref<Picture>& picture) override { mGround.Show(picture); }

 private:
  CanvasWidget& mGround;
};

}  // namespace

std::unique_ptr<CanvasPane> NewCanvasPane(Canvas& canvas, WindowImp& window) {
  return std::make_unique<CanvasPaneImp>(new CanvasWidget(canvas, ContentOf(window)));
}

}  // namespace zelto
