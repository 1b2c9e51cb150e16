#include "tests/Fixtures.h"

#include "app/Sequence.h"
#include "core/FileTypes1.h"
#include "platform/runtime/Plugins.h"

ApplicationFixture::ApplicationFixture() {
  zelto::RuntimeInit();
  zelto::initialize();
  zelto::RuntimeInitExternalClasses();
  zelto::InitPluginEntrypoints();
  zelto::FileTypes1::Initialize();
  zelto::RuntimeRegisterAppObject(zelto::RuntimeNewObject<class zelto::App>());
}

ApplicationFixture::~ApplicationFixture() {
  zelto::finalize();
  zelto::RuntimeExit();
}

void Until(const std::function<bool()>& condition) {
  EXPECT_TRUE(QTest::qWaitFor(condition, 20'000));
}

QPointer<QObject> Once(const std::function<bool()>& condition,
                       const std::function<void()>& action) {
  auto* timer = new QTimer(qApp);
  QObject::connect(timer, &QTimer::timeout, timer, [=] {
    if (!condition()) return;
    timer->stop();
    timer->deleteLater();
    action();
  });
  timer->start(5);
  return timer;
}

QPointer<QObject> WhenModal(const std::function<void(QWidget&)>& action) {
  return Once(
      [] {
        const auto* window = QApplication::activeModalWidget();
        return window && window->isVisible() && !qobject_cast<const QFileDialog*>(window);
      },
      [=] { action(*QApplication::activeModalWidget()); });
}

void AnswerFileDialog(const std::string& file, int result,
                      const std::function<void(const QFileDialog&)>& look) {
  const auto dialog = [] { return qobject_cast<QFileDialog*>(QApplication::activeModalWidget()); };
  Once(dialog, [=] {
    look(*dialog());
    dialog()->selectFile(QString::fromStdString(file));
    static_cast<QDialog*>(dialog())->done(result);
  });
}

void Press(const zelto::Ref<zelto::RectControl>& button) {
  zelto::InvokeHandler([&] { button->Raise("Action"); });
}

void WhenModalPress(const std::string& button, std::string* labels) {
  WhenModal([=](QWidget& window) {
    if (labels) {
      for (auto* label : window.findChildren<QLabel*>()) {
        if (label->pixmap().isNull()) *labels += label->text().toStdString() + "|";
      }
      for (auto* area : window.findChildren<QPlainTextEdit*>()) {
        *labels += area->toPlainText().toStdString() + "|";
      }
    }
    for (auto* each : window.findChildren<QAbstractButton*>()) {
      // A mouse click and not click(), so that the test fails if the window refuses input.
      if (each->text().toStdString() == button) return QTest::mouseClick(each, Qt::LeftButton);
    }
    ADD_FAILURE() << "no button " << button;
    window.close();
  });
}

QWidget* TopLevel(const char* title) {
  for (auto* top : QApplication::topLevelWidgets()) {
    if (top->windowTitle() == title) return top;
  }
  return nullptr;
}
