#pragma once

#include <exception>

#include "platform/Window.h"

namespace zelto {

class Application;

// A call of the toolkit into the program. Handlers nest, where one waits in a loop that serves
// events.
struct HandlerFrame {
  HandlerFrame* Outer = nullptr;
  Waiting Waits = Waiting::Not;
  bool ShowsDialog = false;  // which takes input, whatever waits outside
  int Refusals = 0;
};

struct RegisteredType {
  String Name;
  String Extensions;
};

// All state of the framework. RuntimeInit makes it and RuntimeExit ends it. The process can end by
// exit, which the toolkit calls when the display goes; then nothing in it is destroyed.
struct Framework {
  Ref<Application> App;
  HandlerFrame* InnermostFrame = nullptr;
  EventSource* Me = nullptr;  // the object whose event is handled
  bool IsQuitting = false;
  Int32 ExitStatus = 0;
  std::exception_ptr Failure;  // what is no RuntimeException, on its way to RuntimeRun

  std::vector<Ref<Window>> Windows;
  std::vector<std::pair<String, Ref<Window>>> ImplicitWindows;  // by class name
  std::vector<Ref<Window>> DirtyWindows;
  std::vector<RegisteredType> FileTypes;
};

// The framework between RuntimeInit and RuntimeExit.
Framework& State();

}  // namespace zelto
