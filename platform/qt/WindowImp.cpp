#include <QEventLoop>
#include <QPointer>
#include <QTimer>
#include <QWindow>

#include "platform/Application.h"
#include "platform/Window.h"
#include "platform/qt/MenuBar.h"
#include "platform/qt/Text.h"
#include "platform/qt/TopLevel.h"
#include "platform/qt/WidgetPane.h"
#include "platform/qt/Widgets.h"

namespace zelto {

namespace {

class QtWindowImp : public WindowImp {
 public:
  explicit QtWindowImp(Window& window) : mWindow(window), mTop(new TopLevel(window)) {}
  QtWindowImp(const QtWindowImp&) = delete;
  QtWindowImp& operator=(const QtWindowImp&) = delete;
  ~QtWindowImp() override { mTop->Detach(); }

  void SetProperty(const String& name, const PropertyValue& value) override {
    if (name == "Title") mTop->setWindowTitle(ToDisplayText(std::get<String>(value)));
    if (name == "Width") mSize.setWidth(std::get<Int32>(value));
    if (name == "Height") mSize.setHeight(std::get<Int32>(value));
    if (name == "MinWidth") mSmallest.setWidth(std::get<Int32>(value));
    if (name == "MinHeight") mSmallest.setHeight(std::get<Int32>(value));
    if (name == "Frame") mIsDialog = std::get<Int32>(value) == 1;
    if (name == "Resizeable") mIsResizeable = std::get<bool>(value);
    if (name == "CloseButton") SetHint(Qt::WindowCloseButtonHint, std::get<bool>(value));
    if (name == "MinimizeButton") SetHint(Qt::WindowMinimizeButtonHint, std::get<bool>(value));
    if (name == "MaximizeButton") SetHint(Qt::WindowMaximizeButtonHint, std::get<bool>(value));
  }

  Int32 Left() const override { return mTop->geometry().left(); }
  Int32 Top() const override { return mTop->geometry().top(); }
  Int32 Width() const override { return mTop->Content().width(); }
  Int32 Height() const override { return mTop->Content().height(); }
  // The geometry without the frame, which is not known before the window is shown.
  void MoveTo(Int32 left, Int32 top) override {
    mTop->setGeometry(left, top, mTop->width(), mTop->height());
  }

  void SetMenuBar(const Ref<MenuBar>& bar) override { mMenuBar = bar; }

  void ControlsCreated() override {
    mTop->setWindowFlags((mIsDialog ? Qt::Dialog : Qt::Window) | Qt::CustomizeWindowHint |
                         Qt::WindowTitleHint | Qt::WindowSystemMenuHint | mHints);
    if (mIsResizeable) {
      mTop->Content().setMinimumSize(mSmallest);
    } else {
      mTop->Content().setFixedSize(mSize);
      mTop->layout()->setSizeConstraint(QLayout::SetFixedSize);
    }
    mTop->resize(mSize);
    mTop->layout()->activate();
    mTop->OrderTabs();
    // A window that is still hidden then gets ready while the user looks at another one.
    constexpr int pause = 100;  // milliseconds
    QTimer::singleShot(pause, &mContext, [this] { Prepare(); });
  }

  void Show() override {
    AddMenuBar();
    mTop->show();
  }

  void ShowModal(WindowImp* parent) override {
    AllowInput();
    mTop->setWindowModality(parent ? Qt::WindowModal : Qt::ApplicationModal);
    if (parent) AttachTo(*mTop, *parent);
    mTop->show();
    QEventLoop loop;
    mLoop = &loop;
    loop.exec();
  }

  void Close() override {
    mTop->hide();
    if (mLoop) mLoop->quit();
  }

  void UpdateNow() override { mTop->repaint(); }

  TopLevel& Widget() { return *mTop; }

 private:
  // All that a first showing takes: the bar, the system's window, the fonts of the texts.
  void Prepare() {
    if (mTop->isVisible()) return;
    AddMenuBar();
    mTop->winId();
    mTop->grab();
  }

  // Not at once: the toolkit's bar loads the plug-ins of all picture formats, and the window in
  // front need not wait for that.
  void AddMenuBar() {
    if (!mMenuBar || mTop->layout()->menuBar()) return;
    QWidget* bar = NewMenuBar(mWindow, mMenuBar, mContext);
    mTop->SetMenuBar(bar);
    mTop->resize(mTop->size() + QSize(0, bar->sizeHint().height()));
  }

  void SetHint(Qt::WindowType hint, bool isOn) { mHints.setFlag(hint, isOn); }

  Window& mWindow;
  QObject mContext;  // what must not outlive the window is connected through it
  TopLevel* mTop;
  Ref<MenuBar> mMenuBar;
  QSize mSize;
  QSize mSmallest;
  bool mIsDialog = false;
  bool mIsResizeable = false;
  Qt::WindowFlags mHints;
  QPointer<QEventLoop> mLoop;
};

}  // namespace

std::unique_ptr<WindowImp> NewWindowImp(Window& window) {
  return std::make_unique<QtWindowImp>(window);
}

QWidget* ContentOf(WindowImp& window) {
  return &static_cast<QtWindowImp&>(window).Widget().Content();
}

void AttachTo(QWidget& dialog, WindowImp& parent) {
  dialog.winId();  // makes the window that can be attached
  dialog.windowHandle()->setTransientParent(ContentOf(parent)->window()->windowHandle());
}

}  // namespace zelto
