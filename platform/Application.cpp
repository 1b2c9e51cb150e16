#include "platform/Application.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <iostream>
#include <tuple>

#include "platform/Framework.h"
#include "platform/MessageDialog.h"
#include "platform/Toolkit.h"
#include "platform/runtime/Secrecy.h"
#include "platform/runtime/Wait.h"

namespace zelto {

namespace {

Framework* framework = nullptr;

// The phase of the innermost handler that waits or is in a dialog.
Phase CurrentPhase() {
  const auto* frame = State().InnermostFrame;
  while (frame && frame->Now == Phase::Running) frame = frame->Outer;
  return frame ? frame->Now : Phase::Running;
}

void ShowCurrentPhase() {
  const Phase phase = CurrentPhase();
  if (std::exchange(State().ShownPhase, phase) != phase) ShowPhase(phase);
}

class HandlerScope {
 public:
  HandlerScope() { State().InnermostFrame = &mFrame; }
  HandlerScope(const HandlerScope&) = delete;
  HandlerScope& operator=(const HandlerScope&) = delete;
  ~HandlerScope() {
    State().InnermostFrame = mFrame.Outer;
    ShowCurrentPhase();
  }

 private:
  HandlerFrame mFrame{State().InnermostFrame};
};

void End(Int32 status) {
  if (!State().IsQuitting) State().ExitStatus = status;
  State().IsQuitting = true;
  EndLoops();
}

bool IsQuitAllowed() {
  if (State().IsQuitting) return true;
  if (State().App && State().App->Raise("CancelClose")) return false;
  // A copy, because a handler can close a window.
  const auto& listed = WindowSupport::Windows();
  const std::vector windows(listed.begin(), listed.end());
  return std::none_of(windows.begin(), windows.end(),
                      [](const auto& window) { return window->Raise("CancelClose", {true}); });
}

void ShowUnhandled(const String& text) {
  const auto dialog = RuntimeNewObject<MessageDialog>();
  dialog->Message("The utility has to end.");
  dialog->Explanation(text);
  ShowMessageDialog(*dialog, nullptr);
}

// Opens /dev/null in place of closed standard descriptors. Otherwise, the first files and sockets
// of the process would take their numbers, and messages would be written to them.
void OpenStandardDescriptors() {
  int opened = STDIN_FILENO;
  while (opened >= STDIN_FILENO && opened <= STDERR_FILENO) opened = open("/dev/null", O_RDWR);
  close(opened);
}

}  // namespace

Framework& State() { return *framework; }

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
  SetPhase(Phase::Busy);
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
      if (!Raise("UnhandledException", {&exception})) RuntimeUnhandledException(exception);
    } catch (const EndException&) {  // the handler has called Quit
    }
  }
}

void RuntimeRegisterAppObject(const Ref<Application>& app) { State().App = app; }

Ref<Application> GetAppObject() { return State().App; }

void RuntimeInit() {
  OpenStandardDescriptors();
  DisableCoreDumps();
  std::signal(SIGPIPE, SIG_IGN);  // a command can end before it has read its command line
  std::signal(SIGCHLD, SIG_DFL);  // if it is ignored, waitpid loses exit statuses
  framework = new Framework;
  StartToolkit();
}

void RuntimeRun() {
  if (State().IsQuitting) return;
  const Int32 status = RunLoop();
  if (!State().IsQuitting) State().ExitStatus = status;
}

Int32 RuntimeExit() {
  const Int32 status = State().ExitStatus;
  State() = {};  // destroys the windows before the toolkit
  EndToolkit();
  delete std::exchange(framework, nullptr);
  return status;
}

void Quit(Int32 status) {
  if (IsQuitAllowed()) End(status);
  throw EndException();
}

bool QuitMenuAction(const QuitMenuItem&) {
  if (IsQuitAllowed()) End(0);
  return true;
}

void RuntimeUnhandledException(const RuntimeException& exception) {
  String text = exception.ClassName();
  if (!exception.Message().IsNil()) text = text + ": " + exception.Message();
  std::cerr << "zelto-update-utility: " << text.Bytes() << std::endl;
  if (!State().IsQuitting && PrimaryScreenSize()) ShowUnhandled(text);
  End(1);
}

void ReportCaughtException() {
  try {
    throw;
  } catch (const RuntimeException& exception) {
    RuntimeUnhandledException(exception);
  } catch (const std::exception& exception) {
    RuntimeUnhandledException(RuntimeException("std::exception", exception.what()));
  } catch (...) {
    RuntimeUnhandledException(RuntimeException("an unknown exception"));
  }
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
    ReportCaughtException();
  }
}

void InvokeHandler(Object& object, const std::function<void()>& function) {
  const Ref alive(&object);
  InvokeHandler(function);
}

// An inner handler that runs during the wait of an outer one counts as waiting too.
bool HandlerWaits() {
  const Phase phase = CurrentPhase();
  return phase == Phase::Busy || phase == Phase::Blocked;
}

bool AllowClose() {
  auto* frame = State().InnermostFrame;
  if (!HandlerWaits() || frame->Refusals++ > 0) return true;
  Beep();
  if (frame->OnRefusal) frame->OnRefusal();
  return false;
}

void OnRefusedClose(std::function<void()> function) {
  State().InnermostFrame->OnRefusal = std::move(function);
}

void SetPhase(Phase phase) {
  auto* frame = State().InnermostFrame;
  if (!frame) return;
  frame->Now = phase;
  if (phase == Phase::InDialog) frame->Refusals = 0;
  ShowCurrentPhase();
}

void ThrowIfQuitting() {
  if (State().IsQuitting) throw EndException();
}

}  // namespace zelto
