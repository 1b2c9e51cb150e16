#pragma once

#include <gmock/gmock.h>

#include <QTest>
#include <QtWidgets>
#include <functional>
#include <string>

#include "core/App.h"
#include "core/Globals.h"
#include "platform/Framework.h"
#include "platform/MessageDialog.h"
#include "tests/StubPrograms.h"
#include "ui/MenuBar1.h"
#include "ui/WAbout.h"
#include "ui/WPerm.h"
#include "ui/Window1.h"

// The program without its main window: the toolkit, the class tables, the application object.
class ApplicationFixture {
 public:
  ApplicationFixture();
  ~ApplicationFixture();
};

// Runs the event loop until the condition is true. Fails the test after 20 seconds.
void Until(const std::function<bool()>& condition);

// Calls the action once, when the condition becomes true. Delete the result to cancel.
QPointer<QObject> Once(const std::function<bool()>& condition, const std::function<void()>& action);
// Calls the action with the next modal window that is not a file dialog, when it is shown.
QPointer<QObject> WhenModal(const std::function<void(QWidget& window)>& action);
// Records the label texts of the next modal window and then presses the button.
void WhenModalPress(const std::string& button, std::string* labels = nullptr);
// Ends the next file dialog with the file, after a call of `look`.
void AnswerFileDialog(
    const std::string& file, int result = QDialog::Accepted,
    const std::function<void(const QFileDialog& dialog)>& look = [](const QFileDialog&) {});
// Presses the button. Returns when its handler has ended.
void Press(const zelto::Ref<zelto::RectControl>& button);

// Calls the function before each event of the type for the object, or for any object if it is qApp.
class OnEvent : public QObject {
 public:
  OnEvent(QObject& object, QEvent::Type type, std::function<void(QObject& receiver)> function)
      : mType(type), mFunction(std::move(function)) {
    object.installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* receiver, QEvent* event) override {
    if (event->type() == mType) mFunction(*receiver);
    return false;
  }

 private:
  QEvent::Type mType;
  std::function<void(QObject&)> mFunction;
};

constexpr const char* MainTitle = "ZELTO Group Update Utility";
// The window with this title, or null.
QWidget* TopLevel(const char* title);
// The widget of the control with this name. Throws if there is none.
template <class T = QWidget>
T& ControlWidget(QWidget& window, const char* name) {
  if (auto* widget = window.findChild<T*>(name)) return *widget;
  throw std::runtime_error("no control of that name");
}

// The main window, shown at once.
class OpenedWindow1 : public zelto::Window1 {
 public:
  void Event_Open() override { Show(); }
};

// A fixture with the main window after authentication.
template <class W = OpenedWindow1>
class WindowTest : public testing::Test {
 protected:
  WindowTest() : mWindow(zelto::RuntimeNewObject<W>()) {
    zelto::Globals::User = "zt";
    zelto::Globals::Passwd = "secret";
    mWindow->Constructor();
    mTop = TopLevel(MainTitle);
    mLine = &ControlWidget<QLineEdit>(*mTop, "EditField1");
    Until([this] { return mTop->isActiveWindow(); });
  }

  // The item of the menu bar with this text.
  QAction* Item(const QString& text) {
    for (auto* action : mTop->findChildren<QAction*>()) {
      if (action->text() == text) return action;
    }
    throw std::runtime_error("no such item");
  }

  void Choose(const std::string& path) {
    zelto::InvokeHandler([&] { mWindow->EditField1()->Text(path); });
  }

  ApplicationFixture mApplication;
  StubPrograms mStubs;
  zelto::Ref<W> mWindow;
  QWidget* mTop;
  QLineEdit* mLine;  // the field of the path
};

// A fixture for tests that extract the record.
class RecordTest : public WindowTest<> {
 protected:
  void SetUp() override {
    if (!RemoveRecord()) GTEST_SKIP() << "the record in /tmp belongs to another user";
  }
  void TearDown() override { RemoveRecord(); }
};
