#include <csignal>
#include <optional>

#include "app/Sequence.h"
#include "core/FileTypes1.h"
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

// Records at its end whether the globals still had their values.
class Witness : public Window {
 public:
  static inline bool IsFirstReleased = false;
  const Class& ClassOf() const override { return ClassTable(); }
  ~Witness() override {
    IsFirstReleased = !Globals::User.IsNil() && FileTypes1::gzipTarFile() &&
                      GetAppObject()->MenuBar() == MenuBar1();
  }
};

// Runs the program, with this action of the user on the dialog. Closes the main window when it is
// shown, and returns its position. Returns nothing if it was not shown.
std::optional<QPoint> MainWindowPosition(const std::function<void(QWidget& dialog)>& action) {
  RuntimeInit();
  WhenModal(action);
  std::optional<QPoint> position;
  const OnEvent moves(*qApp, QEvent::Move, [](QObject& moved) {
    EXPECT_FALSE(&moved == TopLevel(MainTitle) && TopLevel(MainTitle)->isVisible());
  });
  Once([] { return TopLevel(MainTitle)->isVisible(); },
       [&] {
         position = TopLevel(MainTitle)->geometry().topLeft();
         TopLevel(MainTitle)->close();
       });
  EXPECT_EQ(RunProgram(), 0);
  return position;
}

}  // namespace

TEST(Sequence, ForeignExceptionEndsTheProgramWithAMessage) {
  RuntimeInit();
  std::string labels;
  WhenModal([&](QWidget&) {
    Once([] { return QApplication::activeModalWidget()->windowTitle() != "Authenticate"; },
         [&] { WhenModalPress("OK", &labels); });
    InvokeHandler([] { throw std::bad_alloc(); });
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

TEST(Sequence, MainWindowIsNotShownIfTheDialogIsClosed) {
  EXPECT_FALSE(MainWindowPosition([](QWidget& dialog) { dialog.close(); }));
}

TEST(Sequence, AcceptedUserSeesTheMainWindowAtItsPosition) {
  const StubPrograms programs;
  std::signal(SIGCHLD, SIG_IGN);  // as if inherited from a parent process
  QSize screen;
  Ref<MenuBar> bar;
  const auto position = MainWindowPosition([&](QWidget& dialog) {
    screen = dialog.screen()->size();
    RuntimeNewObject<Witness>();
    bar = MenuBar1();
    ControlWidget<QLineEdit>(dialog, "authuser").setText("zt");
    ControlWidget<QLineEdit>(dialog, "passwd").setText("secret");
    WhenModalPress("Authenticate");
  });
  EXPECT_EQ(position, QPoint((screen.width() - 488) / 2, (screen.height() - 298) / 3));
  EXPECT_TRUE(Witness::IsFirstReleased);
  EXPECT_FALSE(MenuBar1() == bar);  // a new one: the first is released
  EXPECT_TRUE(Globals::User.IsNil() && Globals::Passwd.IsNil());
  EXPECT_FALSE(FileTypes1::gzipTarFile());
}

TEST(Sequence, StartOpensClosedStandardDescriptors) {
  if (!IsRunAgain()) return RunAgain("sh -c 'exec \"$@\" <&- 2>&-' sh");
  RuntimeInit();
  for (const char* const descriptor : {"/proc/self/fd/0", "/proc/self/fd/2"}) {
    EXPECT_EQ(std::filesystem::read_symlink(descriptor), "/dev/null");
  }
  RuntimeExit();
}
