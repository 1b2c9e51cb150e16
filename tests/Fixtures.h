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

// Serves events until the condition holds; a failed test if it does not within 20 seconds.
void Until(const std::function<bool()>& condition);

// Acts when the condition holds for the first time. The result waits for it; delete it to wait no
// longer.
QPointer<QObject> Once(const std::function<bool()>& condition, const std::function<void()>& action);
// Acts on the next modal window once it is on the screen.
QPointer<QObject> WhenModal(const std::function<void(QWidget& window)>& action);
// Presses the button of the next modal window; the texts of its labels are noted before.
void WhenModalPress(const std::string& button, std::string* labels = nullptr);

// Closes the active window twice once the condition holds; the first time has to be refused.
void CloseTwiceOnce(const std::function<bool()>& condition);

QWidget* MainWindow();
// The widget of the control with this name. Throws when there is none.
QWidget& ControlWidget(QWidget& window, const char* name);

// The main window, which shows itself at once.
class OpenedWindow1 : public zelto::Window1 {
 public:
  void Event_Open() override { Show(); }
};

// With the main window of a user who has been accepted.
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
