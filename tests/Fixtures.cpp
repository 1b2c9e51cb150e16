#include "tests/Fixtures.h"

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTest>
#include <QTimer>

#include "app/Sequence.h"
#include "core/FileTypes1.h"
#include "platform/runtime/Plugins.h"
#include "ui/MenuBar1.h"

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
  QElapsedTimer timer;
  timer.start();
  while (!condition() && timer.elapsed() < 20'000) QApplication::processEvents({}, 10);
  EXPECT_TRUE(condition());
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
        return window && window->isVisible();
      },
      [=] { action(*QApplication::activeModalWidget()); });
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
