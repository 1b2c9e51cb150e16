#pragma once

#include <exception>
#include <functional>

#include "platform/Window.h"

namespace zelto {

class Application;

// A call from the toolkit to a handler. Frames nest if the handler runs an event loop.
struct HandlerFrame {
  HandlerFrame* Outer = nullptr;
  Waiting Waits = Waiting::Not;
  bool ShowsDialog = false;  // the dialog accepts input even if an outer handler waits
  int Refusals = 0;
  std::function<void()> OnRefusal;
};

struct RegisteredType {
  String Name;
  String Extensions;
};

// All state of the framework. RuntimeInit creates it and RuntimeExit destroys it. If the connection
// to the display breaks, Qt calls exit, which does not destroy this state.
struct Framework {
  Ref<Application> App;
  HandlerFrame* InnermostFrame = nullptr;
  EventSource* Me = nullptr;  // the object whose event is handled
  bool IsQuitting = false;
  Int32 ExitStatus = 0;
  std::exception_ptr Failure;  // not a RuntimeException; RuntimeRun rethrows it

  std::vector<Ref<Window>> Windows;
  std::vector<std::pair<String, Ref<Window>>> ImplicitWindows;  // by class name
  std::vector<Ref<Window>> DirtyWindows;
  std::vector<RegisteredType> FileTypes;
};

// The framework. Valid between RuntimeInit and RuntimeExit.
Framework& State();

}  // namespace zelto
