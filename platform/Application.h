#pragma once

#include <functional>
#include <vector>

#include "platform/EventSource.h"
#include "platform/Menu.h"
#include "platform/Toolkit.h"

namespace zelto {

class Application : public MenuTarget {
 public:
  static const Class& ClassTable();
  const Class& ClassOf() const override { return ClassTable(); }

  Ref<class MenuBar> MenuBar() const { return mMenuBar; }
  void MenuBar(const Ref<class MenuBar>& bar) { mMenuBar = bar; }
  String ShortVersion() const;

  // Runs the event loop until the time is over or a command ends. The calling handler counts as
  // waiting, so user input has no effect. Throws EndException if the application ends.
  void DoEvents(Int32 milliseconds);

  // Calls a handler. Ignores EndException and ThreadEndException. Any other RuntimeException raises
  // UnhandledException. Unless its handler returns True, shows a message and ends the application.
  void CallFunctionWithExceptionHandling(const std::function<void()>& function);

 private:
  Ref<class MenuBar> mMenuBar;
};

void RuntimeRegisterAppObject(const Ref<Application>& app);
Ref<Application> GetAppObject();

void RuntimeInit();
// Runs the event loop until Quit, or not at all after Quit.
void RuntimeRun();
// Ends the framework and returns the exit status.
Int32 RuntimeExit();

// Ends the application with the exit status, unless CancelClose of the application or of a window
// returns True. Throws EndException in both cases.
[[noreturn]] void Quit(Int32 status);
// What a Quit item does: Quit(0) for a caller that goes on. Returns True.
bool QuitMenuAction(const QuitMenuItem& item);
// Reports the exception and ends the application with exit status 1.
void RuntimeUnhandledException(const RuntimeException& exception);
// The same for the exception of any type that is being handled.
void ReportCaughtException();

void Beep();

class Screen : public Object {
 public:
  Int32 Width() const { return mWidth; }    // pixels
  Int32 Height() const { return mHeight; }  // pixels

 private:
  friend Ref<class Screen> Screen(Int32 index);

  Int32 mWidth = 0;
  Int32 mHeight = 0;
};

// Screen 0 is the primary screen. Returns nil for any other index, or if there is no screen.
Ref<class Screen> Screen(Int32 index);

// Calls a handler of the program from the toolkit. Throws nothing. An exception of another type
// than RuntimeException is reported and ends the application.
void InvokeHandler(const std::function<void()>& function);
// The same for a handler of the object. The handler can close it: the object lives until the end.
void InvokeHandler(Object& object, const std::function<void()>& function);

// True if a handler waits, unless a dialog of an inner handler accepts input.
bool HandlerWaits();
// Whether to obey a request to close or quit. While a handler waits, refuses the first with a beep.
bool AllowClose();
// Calls the function when a request to close is refused during the running handler.
void OnRefusedClose(std::function<void()> function);

// Sets the phase of the running handler until it returns or enters another one.
void SetPhase(Phase phase);

// Throws EndException if the application ends. Call it after each nested event loop.
void ThrowIfQuitting();

}  // namespace zelto
