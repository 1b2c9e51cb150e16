#pragma once

#include <functional>

#include "platform/Dictionary.h"
#include "platform/Window.h"

namespace zelto {

class Application;

// A call from the toolkit to a handler. Frames nest if the handler runs an event loop.
struct HandlerFrame {
  HandlerFrame* Outer = nullptr;
  Phase Now = Phase::Running;
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
  Phase ShownPhase = Phase::Running;
  EventSource* Me = nullptr;  // the object whose event is handled
  bool IsQuitting = false;
  Int32 ExitStatus = 0;

  std::vector<Ref<Window>> Windows;
  Dictionary<Ref<Window>> ImplicitWindows;  // by class name
  std::vector<Ref<Window>> DirtyWindows;
  std::vector<RegisteredType> FileTypes;
};

// The framework. Valid between RuntimeInit and RuntimeExit.
Framework& State();

}  // namespace zelto
