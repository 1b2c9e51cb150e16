#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>
#include <string>

#include "core/App.h"

// The program without its main window: the toolkit, the class tables, the application object.
class Stage {
 public:
  Stage();
  ~Stage();
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;
};

// Serves events until the condition holds; a failed test if it does not within 20 seconds.
void Until(const std::function<bool()>& condition);

// Acts on the next modal window once it is on the screen. The result waits for it; delete it to
// wait no longer.
QPointer<QObject> WhenModal(const std::function<void(QWidget& window)>& action);
// Presses the button of the next modal window; the texts of its labels are noted before.
void WhenModalPress(const std::string& button, std::string* labels = nullptr);

// Closes the active window twice once the condition holds; the first time has to be refused.
void CloseTwiceOnce(const std::function<bool()>& condition);

QWidget& ControlWidget(QWidget& window, int left, int top);
