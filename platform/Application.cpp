#include "platform/Application.h"

#include <algorithm>
#include <exception>
#include <iostream>
#include <tuple>

#include "platform/MessageDialog.h"
#include "platform/Toolkit.h"
#include "platform/Window.h"
#include "platform/runtime/Secrecy.h"
#include "platform/runtime/Wait.h"

namespace zelto {

namespace {

// A run of one handler. Handlers nest, where one waits in a loop that serves events.
struct HandlerFrame {
  HandlerFrame* Outer;
  Waiting Waits = Waiting::Not;
  bool ShowsDialog = false;  // which takes input, whatever waits outside
  int Refusals = 0;
};

struct State {
  Ref<Application> App;
  HandlerFrame* Innermost = nullptr;
  bool Ending = false;
  Int32 ExitStatus = 0;
  std::exception_ptr Failure;
};

State& Now() {
  static auto& state = *new State;
  return state;
}

class HandlerScope {
 public:
  HandlerScope() { Now().Innermost = &mRun; }
  HandlerScope(const HandlerScope&) = delete;
  HandlerScope& operator=(const HandlerScope&) = delete;
  ~HandlerScope() {
    AllowInput();
    Now().Innermost = mRun.Outer;
  }

 private:
  HandlerFrame mRun{Now().Innermost};
};

void End(Int32 status) {
  if (!Now().Ending) Now().ExitStatus = status;
  Now().Ending = true;
  EndLoops();
}

bool IsQuitAllowed() {
  if (Now().Ending) return true;
  if (Now().App && Now().App->Raise("CancelClose")) return false;
  const auto windows = WindowSupport::Windows();
  return std::none_of(windows.begin(), windows.end(),
                      [](const auto& window) { return window->Raise("CancelClose", {true}); });
}

void ShowUnhandled(const String& text) {
  const auto dialog = RuntimeNewObject<MessageDialog>();
  dialog->Message("The utility has to end.");
  dialog->Explanation(text);
  ShowMessageDialog(*dialog, nullptr);
}

}  // namespace

const Class& Application::ClassTable() {
  static const Class table({.Name = "Application",
                            .Events = {{"Open"},
                                       {"Close"},
                                       {"EnableMenuItems", "(  )"},
                                       {"NewDocument"},
                                       {"OpenDocument"},
                                       {"HandleAppleEvent"},
                                       {"Activate"},
                                       {"Deactivate"},
                                       {"UnhandledException", "( RuntimeException ) as Boolean"},
                                       {"CancelClose", "(  ) as Boolean"}}});
  return table;
}

String Application::ShortVersion() const { return ApplicationVersion(); }

void Application::DoEvents(Int32 milliseconds) {
  BeginWaiting(Waiting::Busy);
  ServeEvents(milliseconds);
  ThrowIfQuitting();
}

void Application::CallFunctionWithExceptionHandling(const std::function<void()>& function) {
  const HandlerScope scope;
  try {
    function();
  } catch (const EndException&) {
  } catch (const ThreadEndException&) {
  } catch (const RuntimeException& exception) {
    try {
      if (!Raise("UnhandledException", {&exception})) RuntimeUnhandledException(&exception);
    } catch (const EndException&) {  // the handler has called Quit
    }
  }
}

void Application::EnableMenuItems(const std::vector<Ref<MenuItem>>& items) {
  Raise("EnableMenuItems");
  mMenuHandlers.Enable(items);
}

void RuntimeRegisterAppObject(const Ref<Application>& app) { Now().App = app; }

Ref<Application> GetAppObject() { return Now().App; }

void RuntimeInit() {
  DisableCoreDumps();
  StartToolkit();
}

void RuntimeRun() {
  if (!Now().Ending && !Now().Failure) RunLoop();
  const auto failure = std::exchange(Now().Failure, nullptr);
  if (!failure) return;
  AllowLoops();  // for the message about it
  std::rethrow_exception(failure);
}

Int32 RuntimeExit() {
  const Int32 status = Now().ExitStatus;
  Now() = {};
  EndToolkit();
  return status;
}

void Quit(Int32 status) {
  if (IsQuitAllowed()) End(status);
  throw EndException();
}

void RuntimeUnhandledException(const RuntimeException* exception) {
  String text = "an unknown exception";
  if (exception) text = exception->ClassName();
  if (exception && !exception->Message().IsNil()) text = text + ": " + exception->Message();
  std::cerr << "zelto-update-utility: " << text.Bytes() << std::endl;
  if (!Now().Ending) ShowUnhandled(text);
  End(1);
}

void Beep() { RuntimeBeep(); }

Ref<class Screen> Screen(Int32 index) {
  const auto size = PrimaryScreenSize();
  if (index != 0 || !size) return nullptr;
  auto screen = RuntimeNewObject<class Screen>();
  std::tie(screen->mWidth, screen->mHeight) = *size;
  return screen;
}

void InvokeHandler(const std::function<void()>& function) {
  try {
    GetAppObject()->CallFunctionWithExceptionHandling(function);
  } catch (...) {
    Now().Failure = std::current_exception();
    EndLoops();
  }
}

// Also while the innermost one is a small one that runs inside the other's wait.
bool HandlerWaits() {
  for (const auto* run = Now().Innermost; run; run = run->Outer) {
    if (run->Waits != Waiting::Not) return true;
    if (run->ShowsDialog) return false;
  }
  return false;
}

bool AllowClose() {
  if (!HandlerWaits() || Now().Innermost->Refusals++ > 0) return true;
  Beep();
  return false;
}

void BeginWaiting(Waiting waiting) {
  auto* run = Now().Innermost;
  if (!run || run->Waits == waiting) return;
  run->Waits = waiting;
  run->ShowsDialog = false;
  ShowWaiting(waiting);
}

void AllowInput() {
  auto* run = Now().Innermost;
  if (!run) return;
  run->ShowsDialog = true;
  run->Refusals = 0;
  if (std::exchange(run->Waits, Waiting::Not) != Waiting::Not) ShowWaiting(Waiting::Not);
}

void ThrowIfQuitting() {
  if (Now().Failure || Now().Ending) throw EndException();
}

}  // namespace zelto
