#include <QApplication>
#include <QLineEdit>
#include <QTimer>

#include "app/Sequence.h"
#include "core/FileTypes1.h"
#include "platform/Application.h"
#include "tests/Stage.h"

using namespace zelto;

namespace {

// Runs the program from its start to its end; gives its exit status.
Int32 RunProgram() {
  initialize();
  Main();
  finalize();
  return RuntimeExit();
}

void Enter(QWidget& dialog, const char* user, const char* password) {
  dynamic_cast<QLineEdit&>(ControlWidget(dialog, 185, 85)).setText(user);
  dynamic_cast<QLineEdit&>(ControlWidget(dialog, 185, 115)).setText(password);
}

}  // namespace

TEST(Sequence, ARefusedUserNeverSeesTheMainWindow) {
  RuntimeInit();
  WhenModal([](QWidget& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Authenticate");
    EXPECT_FALSE(MainWindow()->isVisible());
    dialog.close();
  });
  bool wasShown = false;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, [&] { wasShown |= MainWindow()->isVisible(); });
  watch.start(1);
  EXPECT_EQ(RunProgram(), 0);
  EXPECT_FALSE(wasShown);
}

TEST(Sequence, AnyOtherFailureEndsTheProgramWithAMessage) {
  RuntimeInit();
  WhenModal([](QWidget&) {
    WhenModalPress("OK");
    FromToolkit([] { throw std::bad_alloc(); });
  });
  EXPECT_EQ(RunProgram(), 1);
}

TEST(Sequence, AnAcceptedUserGetsTheMainWindowInItsPlace) {
  const Programs programs;
  RuntimeInit();
  WhenModal([](QWidget& dialog) {
    Enter(dialog, "zt", "secret");
    WhenModalPress("Authenticate");
  });
  bool wasShown = false;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, [&] {
    auto* window = MainWindow();
    if (!window->isVisible()) return;
    wasShown = true;
    EXPECT_EQ(Window1()->Left(), (zelto::Screen(0)->Width() - 488) / 2);
    EXPECT_EQ(Window1()->Top(), (zelto::Screen(0)->Height() - 298) / 3);
    window->close();
  });
  watch.start(5);
  EXPECT_EQ(RunProgram(), 0);
  EXPECT_TRUE(wasShown);
  EXPECT_TRUE(Globals::User.IsNil() && Globals::Passwd.IsNil());
  EXPECT_FALSE(FileTypes1::gzipTarFile());
}
