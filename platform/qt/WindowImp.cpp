#include <QEventLoop>
#include <QGuiApplication>
#include <QPointer>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include "platform/Application.h"
#include "platform/Window.h"
#include "platform/qt/MenuBar.h"
#include "platform/qt/Text.h"
#include "platform/qt/TopLevel.h"

namespace zelto {

namespace {

class QtWindowImp : public WindowImp {
 public:
  explicit QtWindowImp(Window& window) : mWindow(window), mTop(new TopLevel(window)) {}
  ~QtWindowImp() override { mTop->Detach(); }

  Int32 Left() const override { return mTop->geometry().left() - PrimaryCorner().x(); }
  Int32 Top() const override { return mTop->geometry().top() - PrimaryCorner().y(); }
  Int32 Width() const override { return mTop->Content().width(); }
  Int32 Height() const override { return mTop->Content().height(); }
  // Sets the geometry without the frame, because the frame is unknown before the window is shown.
  void MoveTo(Int32 left, Int32 top) override {
    mTop->setGeometry(QRect(QPoint(left, top) + PrimaryCorner(), mTop->size()));
  }

  void SetMenuBar(const Ref<MenuBar>& bar) override { mMenuBar = bar; }

  void Update() override {
    const auto& list = mWindow.Properties();
    const Qt::WindowFlags flags = Flags(list);
    mTop->setWindowTitle(ToDisplayText(list.Title));
    if (mTop->windowFlags() != flags) mTop->setWindowFlags(flags);
    Constrain(mTop->Content().size());
  }

  void Resize(Int32 width, Int32 height) override {
    Constrain({width, height});
    mTop->resize(QSize(width, height + mMenuBarHeight));
    mTop->layout()->activate();
  }

  void Show() override {
    AddMenuBar();
    mTop->show();
  }

  void ShowLater() override {
    QTimer::singleShot(0, &mContext, [this] {
      if (!mTop->testAttribute(Qt::WA_WState_ExplicitShowHide)) Show();
    });
  }

  void Hide() override { mTop->hide(); }

  void ShowModal(WindowImp* parent) override {
    SetPhase(Phase::InDialog);
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
  static QPoint PrimaryCorner() {
    const auto* screen = QGuiApplication::primaryScreen();
    return screen ? screen->geometry().topLeft() : QPoint();
  }

  static Qt::WindowFlags Flags(const WindowList& list) {
    Qt::WindowFlags flags = (list.Frame == 1 ? Qt::Dialog : Qt::Window) | Qt::CustomizeWindowHint |
                            Qt::WindowTitleHint | Qt::WindowSystemMenuHint;
    flags.setFlag(Qt::WindowCloseButtonHint, list.CloseButton);
    flags.setFlag(Qt::WindowMinimizeButtonHint, list.MinimizeButton);
    flags.setFlag(Qt::WindowMaximizeButtonHint, list.MaximizeButton);
    return flags;
  }

  // Limits the content's size. A window that is not resizeable keeps the given size.
  void Constrain(QSize size) {
    const auto& list = mWindow.Properties();
    const bool isFixed = !list.Resizeable;
    mTop->Content().setMinimumSize(isFixed ? size : QSize(list.MinWidth, list.MinHeight));
    mTop->Content().setMaximumSize(isFixed ? size : QSize(list.MaxWidth, list.MaxHeight));
    mTop->layout()->setSizeConstraint(isFixed ? QLayout::SetFixedSize : QLayout::SetMinAndMaxSize);
    mTop->layout()->activate();
  }

  // Called only by Show: QMenuBar loads Qt's plug-ins of all picture formats, which would delay the
  // first dialog.
  void AddMenuBar() {
    if (!mMenuBar || mTop->layout()->menuBar()) return;
    QWidget* bar = NewMenuBar(mWindow, mMenuBar, mContext);
    mTop->SetMenuBar(bar);
    mMenuBarHeight = bar->sizeHint().height();
    mTop->resize(mTop->size() + QSize(0, mMenuBarHeight));
  }

  Window& mWindow;
  QObject mContext;  // the context of connections that must not outlive the window
  TopLevel* mTop;
  Ref<MenuBar> mMenuBar;
  int mMenuBarHeight = 0;
  QPointer<QEventLoop> mLoop;
};

}  // namespace

std::unique_ptr<WindowImp> NewWindowImp(Window& window) {
  return std::make_unique<QtWindowImp>(window);
}

TopLevel& TopLevelOf(WindowImp& window) { return static_cast<QtWindowImp&>(window).Widget(); }

void AttachTo(QWidget& dialog, WindowImp& parent) {
  dialog.winId();  // creates the QWindow
  dialog.windowHandle()->setTransientParent(TopLevelOf(parent).windowHandle());
}

}  // namespace zelto
