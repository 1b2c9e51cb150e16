#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QScreen>
#include <QTest>
#include <csignal>

#include "app/Sequence.h"
#include "core/FileTypes1.h"
#include "platform/Application.h"
#include "tests/Fixtures.h"

using namespace zelto;

namespace {

// Runs the program and returns its exit status.
Int32 RunProgram() {
  initialize();
  Main();
  finalize();
  return RuntimeExit();
}

}  // namespace

TEST(Sequence, ForeignExceptionEndsTheProgramWithAMessage) {
  RuntimeInit();
  std::string labels;
  WhenModal([&](QWidget&) {
    InvokeHandler([] { throw std::bad_alloc(); });
    Once([] { return QApplication::activeModalWidget()->windowTitle() != "Authenticate"; },
         [&] { WhenModalPress("OK", &labels); });
  });
  EXPECT_EQ(RunProgram(), 1);
  EXPECT_EQ(labels, "The utility has to end.|std::exception: std::bad_alloc|");
}

TEST(Sequence, LostDisplayEndsTheProgramWithTheToolkitsStatus) {
  RuntimeInit();
  Once([] { return true; }, [] { QCoreApplication::exit(1); });
  RuntimeRun();
  EXPECT_EQ(RuntimeExit(), 1);
}

TEST(Sequence, MainWindowIsNotShownAfterCancel) {
  using Refusal = void (*)(QWidget&);
  const Refusal refusals[] = {
      [](QWidget& dialog) {
        dynamic_cast<QAbstractButton&>(ControlWidget(dialog, "PushButton2")).click();
      },
      [](QWidget& dialog) { dialog.close(); },
      [](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }};
  for (const auto& refuse : refusals) {
    RuntimeInit();
    bool wasShown = false;
    const auto watch = Once([] { return MainWindow()->isVisible(); },
                            [&] {
                              wasShown = true;
                              MainWindow()->close();
                            });
    WhenModal(refuse);
    EXPECT_EQ(RunProgram(), 0);
    EXPECT_FALSE(wasShown);
  }
}

TEST(Sequence, AcceptedUserSeesTheMainWindowAtItsPosition) {
  const StubPrograms programs;
  std::signal(SIGCHLD, SIG_IGN);  // as if inherited from a parent process
  RuntimeInit();
  WhenModal([](QWidget& dialog) {
    dynamic_cast<QLineEdit&>(ControlWidget(dialog, "authuser")).setText("zt");
    dynamic_cast<QLineEdit&>(ControlWidget(dialog, "passwd")).setText("secret");
    WhenModalPress("Authenticate");
  });
  const QSize screen = QGuiApplication::primaryScreen()->size();
  QPoint place;
  bool wasShown = false;
  Once([] { return MainWindow()->isVisible(); },
       [&] {
         wasShown = true;
         place = MainWindow()->geometry().topLeft();
         MainWindow()->close();
       });
  EXPECT_EQ(RunProgram(), 0);
  EXPECT_TRUE(wasShown);
  EXPECT_EQ(place, QPoint((screen.width() - 488) / 2, (screen.height() - 298) / 3));
  EXPECT_TRUE(Globals::User.IsNil() && Globals::Passwd.IsNil());
  EXPECT_FALSE(FileTypes1::gzipTarFile());
}
