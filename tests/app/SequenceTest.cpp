#include <QLineEdit>

#include "app/Sequence.h"
#include "core/FileTypes1.h"
#include "platform/Application.h"
#include "tests/Fixtures.h"

using namespace zelto;

namespace {

// Runs the program from its start to its end; gives its exit status.
Int32 RunProgram() {
  initialize();
  Main();
  finalize();
  return RuntimeExit();
}

}  // namespace

TEST(Sequence, AnyOtherFailureEndsTheProgramWithAMessage) {
  RuntimeInit();
  WhenModal([](QWidget&) {
    WhenModalPress("OK");
    InvokeHandler([] { throw std::bad_alloc(); });
  });
  EXPECT_EQ(RunProgram(), 1);
}

TEST(Sequence, AnAcceptedUserGetsTheMainWindowInItsPlace) {
  const StubPrograms programs;
  RuntimeInit();
  WhenModal([](QWidget& dialog) {
    dynamic_cast<QLineEdit&>(ControlWidget(dialog, "authuser")).setText("zt");
    dynamic_cast<QLineEdit&>(ControlWidget(dialog, "passwd")).setText("secret");
    WhenModalPress("Authenticate");
  });
  bool wasShown = false;
  Once([] { return MainWindow()->isVisible(); },
       [&] {
         wasShown = true;
         MainWindow()->close();
       });
  EXPECT_EQ(RunProgram(), 0);
  EXPECT_TRUE(wasShown);
  EXPECT_TRUE(Globals::User.IsNil() && Globals::Passwd.IsNil());
  EXPECT_FALSE(FileTypes1::gzipTarFile());
}
