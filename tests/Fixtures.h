#pragma once

#include <gtest/gtest.h>

#include <QEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <stdexcept>
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
};

// Runs the event loop until the condition is true. Fails the test after 20 seconds.
void Until(const std::function<bool()>& condition);

// Calls the action once, when the condition becomes true. Delete the result to cancel.
QPointer<QObject> Once(const std::function<bool()>& condition, const std::function<void()>& action);
// Calls the action with the next modal window when it is shown.
QPointer<QObject> WhenModal(const std::function<void(QWidget& window)>& action);
// Records the label texts of the next modal window and then presses the button.
void WhenModalPress(const std::string& button, std::string* labels = nullptr);

// Calls the function at each paint event of the widget.
class OnPaint : public QObject {
 public:
  OnPaint(QWidget& widget, std::function<void()> function) : mFunction(std::move(function)) {
    widget.installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) mFunction();
    return false;
  }

 private:
  std::function<void()> mFunction;
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
    for (auto* menu : mTop->findChildren<QMenu*>()) {
      for (auto* action : menu->actions()) {
        if (action->text() == text) return action;
      }
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
