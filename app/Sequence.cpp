#include "app/Sequence.h"

#include "core/App.h"
#include "core/FileTypes1.h"
#include "core/Globals.h"
#include "exec/Shell.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Plugins.h"
#include "ui/MenuBar1.h"
#include "ui/WAbout.h"
#include "ui/WPerm.h"
#include "ui/Window1.h"

namespace zelto {

namespace {

void InitFileTypes() { FileTypes1::Initialize(); }

void NewAppInstance() {
  const auto app = RuntimeNewObject<class App>();
  app->MenuBar(MenuBar1());
  RuntimeRegisterAppObject(app);
}

// The application has no menu handlers.
void ApplicationAddMenuHandlers() {}

void MakeDefaultView() { Window1(); }

}  // namespace

void initialize() {
  App::ClassTable();
  MenuBar1::ClassTable();
  Window1::ClassTable();
  WPerm::ClassTable();
  WPerm::Timer1::ClassTable();
  WAbout::ClassTable();
}

void RuntimeInitExternalClasses() {
  PublishBevelButton();
  PublishShell();
  PublishWindowFunctions();
  PublishFolderItemFunctions();
}

void Main() {
  try {
    RuntimeInitExternalClasses();
    InitPluginEntrypoints();
    InitFileTypes();
    NewAppInstance();
    ApplicationAddMenuHandlers();
    MakeDefaultView();
    RuntimeRun();
  } catch (...) {
    ReportCaughtException();
  }
}

void finalize() {
  WindowSupport::Finalize();
  MenuBar1::Finalize();
  FileTypes1::Finalize();
  Globals::User = {};
  Globals::Passwd = {};
  Globals::thePatchName = {};
}

void Window1::Event_Open() {
  WPerm()->ShowModal();
  if (!Globals::Authenticated) Quit(0);
  Left(RuntimeCvtReal64ToSInt32(RuntimeCvtSInt32ToReal64(Screen(0)->Width() - Width()) / 2.0));
  Top(RuntimeCvtReal64ToSInt32(RuntimeCvtSInt32ToReal64(Screen(0)->Height() - Height()) / 3.0));
  Show();
}

void Window1::Event_Close() { Quit(0); }

}  // namespace zelto
