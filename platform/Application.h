#pragma once

#include <functional>
#include <vector>

#include "platform/EventSource.h"
#include "platform/Menu.h"
#include "platform/Toolkit.h"

namespace zelto {

class Application : public EventSource {
 public:
  static const Class& ClassTable();
  const Class& ClassOf() const override { return ClassTable(); }

  Ref<class MenuBar> MenuBar() const { return mMenuBar; }
  void MenuBar(const Ref<class MenuBar>& bar) { mMenuBar = bar; }
  String ShortVersion() const;

  // Serves events for at most the time, in milliseconds, less when a command ends. The calling
  // handler waits: what the user does to the windows meanwhile has no effect. Unwinds the handler
  // when the application ends.
  void DoEvents(Int32 milliseconds);

  // The name is the menu item's.
  void AddMenuHandler(const String& name, const Method& handler) {
    mMenuHandlers.Add(name, handler);
  }
  void EnableMenuItems(const std::vector<Ref<MenuItem>>& items);
  // False: the item has no handler, or the handler did nothing.
  bool CallMenuHandler(const String& name) { return mMenuHandlers.Call(*this, name); }

  // The dispatcher's wrapper around each call of the framework into the program.
  void CallFunctionWithExceptionHandling(const std::function<void()>& function);

 private:
  Ref<class MenuBar> mMenuBar;
  MenuHandlers mMenuHandlers;
};

void RuntimeRegisterAppObject(const Ref<Application>& app);
Ref<Application> GetAppObject();

void RuntimeInit();
// Serves events until Quit; returns at once when that has been called already.
void RuntimeRun();
// Ends the framework and gives the exit status.
Int32 RuntimeExit();

// Ends the application with the exit status, unless a CancelClose of the application or of a window
// answers True. Unwinds the calling handler by EndException, and at the end every other one that
// waits.
[[noreturn]] void Quit(Int32 status);
// Tells the user and ends the application with exit status 1.
void RuntimeUnhandledException(const RuntimeException* exception);

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

// The screen of the index, or nil. 0 is the primary screen; no other is known.
Ref<class Screen> Screen(Int32 index);

// Calls the program for the toolkit. No exception comes out: one that the program does not handle
// ends the loops and comes out of RuntimeRun.
void InvokeHandler(const std::function<void()>& function);

// True while the handler that runs waits for a command, so that input is to be refused.
bool HandlerWaits();
// Whether a request to close or quit is to be obeyed. While a handler waits, the first is not: the
// user hears a beep instead.
bool AllowClose();

// The running handler waits from here on, until it ends or a dialog takes input.
void BeginWaiting(Waiting waiting);
void AllowInput();

// Unwinds the calling handler when the application ends. Follows each loop in which one waited.
void ThrowIfQuitting();

}  // namespace zelto
