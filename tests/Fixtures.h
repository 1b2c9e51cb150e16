#pragma once

#include <gtest/gtest.h>

#include <QPointer>
#include <QWidget>
#include <functional>
#include <string>

#include "core/App.h"
#include "core/Globals.h"
#include "tests/StubPrograms.h"
#include "ui/Window1.h"

// The program without its main window: the toolkit, the class tables, the application object.
class ApplicationFixture {
 public:
  ApplicationFixture();
  ~ApplicationFixture();
  ApplicationFixture(const ApplicationFixture&) = delete;
  ApplicationFixture& operator=(const ApplicationFixture&) = delete;
};

// Runs the event loop until the condition is true. Fails the test after 20 seconds.
void Until(const std::function<bool()>& condition);

// Calls the action once, when the condition becomes true. Delete the result to cancel.
QPointer<QObject> Once(const std::function<bool()>& condition, const std::function<void()>& action);
// Calls the action with the next modal window when it is shown.
QPointer<QObject> WhenModal(const std::function<void(QWidget& window)>& action);
// Records the label texts of the next modal window and then presses the button.
void WhenModalPress(const std::string& button, std::string* labels = nullptr);

// Closes the active window twice when the condition becomes true. Expects that the first request is
// refused.
void CloseTwiceWhen(const std::function<bool()>& condition);

QWidget* MainWindow();
// The widget of the control with this name. Throws if there is none.
QWidget& ControlWidget(QWidget& window, const char* name);

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
    mTop = MainWindow();
    Until([this] { return mTop->isActiveWindow(); });
  }

  void Choose(const std::string& path) {
    zelto::InvokeHandler([&] { mWindow->EditField1()->Text(path); });
  }

  ApplicationFixture mApplication;
  StubPrograms mStubs;
  zelto::Ref<W> mWindow;
  QWidget* mTop;
};

// A fixture for tests that extract the record.
class RecordTest : public WindowTest<> {
 protected:
  void SetUp() override {
    if (!RemoveRecord()) GTEST_SKIP() << "the record in /tmp belongs to another user";
  }
  void TearDown() override { RemoveRecord(); }
};
