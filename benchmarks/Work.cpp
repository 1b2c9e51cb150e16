// The utility, controlled by requests: each line of standard input is answered with a line of JSON.
// Times are in milliseconds.
#include <poll.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QSocketNotifier>
#include <QTimer>
#include <atomic>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <thread>

#include "app/Sequence.h"
#include "exec/Interpreter.h"
#include "exec/OutputFile.h"
#include "platform/Application.h"
#include "platform/MessageDialog.h"
#include "platform/runtime/Numbers.h"
#include "ui/WPerm.h"
#include "ui/Window1.h"
#include "update/ContentRecord.h"

namespace {

using namespace zelto;

double Now() {
  static const auto clock = [] {
    QElapsedTimer timer;
    timer.start();
    return timer;
  }();
  return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

// Records the time at which the last child ended, independently of when the program detects it.
class ChildWatch {
 public:
  double LastEnd() const { return mLastEnd; }

 private:
  // Only one command runs at a time. A short command can end unseen between two passes of the loop.
  void Watch(const std::stop_token& stop) {
    for (pid_t seen = 0; !stop.stop_requested(); usleep(2000)) {
      const std::string tasks = "/proc/self/task/" + std::to_string(getpid()) + "/children";
      pid_t child = 0;
      for (std::ifstream children(tasks); children >> child;) {
      }
      if (child == 0 || child == seen) continue;
      seen = child;
      pollfd end{static_cast<int>(syscall(SYS_pidfd_open, child, 0)), POLLIN, 0};
      poll(&end, 1, -1);
      mLastEnd = Now();
      close(end.fd);
    }
  }

  std::atomic<double> mLastEnd = 0;
  std::jthread mThread{[this](const std::stop_token& stop) { Watch(stop); }};
};

constexpr const char* authenticateTitle = "Authenticate";
constexpr const char* mainTitle = "ZELTO Group Update Utility";

bool IsMessage(const QWidget& window) { return qobject_cast<const QDialog*>(&window) != nullptr; }

bool IsMain(const QWidget& window) {
  return window.windowTitle() == mainTitle && !IsMessage(window);
}

bool IsAuthenticate(const QWidget& window) { return window.windowTitle() == authenticateTitle; }

// Calls back after a matching window has been painted and the display server has drawn it.
class Drawn : public QObject {
 public:
  Drawn() { qApp->installEventFilter(this); }

  void Next(bool (*isIt)(const QWidget&), std::function<void(QWidget&)> then) {
    mIsIt = isIt;
    mThen = std::move(then);
  }

 protected:
  bool eventFilter(QObject* object, QEvent* event) override {
    auto* widget = qobject_cast<QWidget*>(object);  // QWindows receive paint events too
    if (event->type() != QEvent::Paint || !widget || !mThen) return false;
    auto* window = widget->window();
    if (!mIsIt(*window)) return false;
    QTimer::singleShot(0, window, [window, then = std::exchange(mThen, nullptr)] {
      QGuiApplication::sync();
      then(*window);
    });
    return false;
  }

 private:
  bool (*mIsIt)(const QWidget&) = nullptr;
  std::function<void(QWidget&)> mThen;
};

// The longest time in which the event loop handled no event.
class Gaps {
 public:
  Gaps() {
    QObject::connect(&mTimer, &QTimer::timeout, &mTimer, [this] {
      mLongest = std::max(mLongest, Now() - mLast);
      mLast = Now();
    });
    mTimer.setTimerType(Qt::PreciseTimer);
    mTimer.start(1);
  }
  double Longest() const { return mLongest; }

 private:
  QTimer mTimer;
  double mLast = Now();
  double mLongest = 0;
};

Drawn* drawn = nullptr;

void Answer(const std::map<std::string, double>& values) {
  const char* separator = "{";
  for (const auto& [name, value] : values) {
    std::cout << separator << '"' << name << "\": " << value;
    separator = ", ";
  }
  std::cout << "}" << std::endl;
}

void Press(QWidget& window, const QString& caption) {
  for (auto* button : window.findChildren<QAbstractButton*>()) {
    if (button->text() == caption) return button->click();
  }
}

QWidget& Find(bool (*isIt)(const QWidget&)) {
  for (auto* window : QApplication::topLevelWidgets()) {
    if (isIt(*window)) return *window;
  }
  throw std::runtime_error("no such window");
}

// One script, so that all command lines use one interpreter.
void RunLines(const std::vector<CommandLine>& lines) {
  String script;
  for (const auto& line : lines) script = script + line.Text + "\n";
  const OutputFile output;
  const double start = Now();
  const auto writer = output.Writer();
  const pid_t process = StartInterpreter({script, lines.back().Password, lines.back().Needs},
                                         "mark", writer.Number(), writer.Number());
  int status = 0;
  waitpid(process, &status, 0);
  Answer({{"ms", Now() - start}, {"status", WEXITSTATUS(status)}});
}

void Authenticate(const String& user, const String& passwd) {
  WPerm()->authuser()->Text(user);
  WPerm()->passwd()->Text(passwd);
  const double start = Now();
  drawn->Next(IsMain, [=](QWidget&) { Answer({{"ms", Now() - start}}); });
  Press(Find(IsAuthenticate), "Authenticate");
}

void Check(const String& path) {
  InvokeHandler([&] {
    Window1()->EditField1()->Text({});
    const double start = Now();
    Window1()->EditField1()->Text(path);
    Answer({{"ms", Now() - start}, {"enabled", Window1()->pbUpdate()->Enabled()}});
  });
}

void Install(const String& path, bool isWatched) {
  if (!(Window1()->EditField1()->Text() == path)) {
    InvokeHandler([&] { Window1()->EditField1()->Text(path); });
  }
  const auto gaps = isWatched ? std::make_unique<Gaps>() : nullptr;
  const auto children = isWatched ? std::make_unique<ChildWatch>() : nullptr;
  std::map<std::string, double> answer;
  const double start = Now();
  drawn->Next(IsMessage, [&](QWidget& dialog) {
    answer = {{"ms", Now() - start}};
    if (isWatched) answer["outcome"] = Now() - children->LastEnd();
    if (isWatched) answer["gap"] = gaps->Longest();
    Press(dialog, "Install Another");
  });
  Press(Find(IsMain), "Update");
  Answer(answer);
}

void FailureDialog(std::size_t bytes) {
  std::string text;
  while (text.size() < bytes)
    text += "tar: /opt/sample/file: Cannot open: No space left on device\n";
  double took = 0;
  InvokeHandler([&, explanation = String(std::move(text))] {
    const double start = Now();
    const auto dialog = RuntimeNewObject<MessageDialog>();
    dialog->Message("Bad update file");
    dialog->Explanation(explanation);
    drawn->Next(IsMessage, [&](QWidget& window) {
      took = Now() - start;
      Press(window, "OK");
    });
    dialog->ShowModalWithin(Ref<Window>(Window1().Get()));
  });
  Answer({{"ms", took}});
}

String user;
String passwd;

void Obey(const std::string& request) {
  const auto fields = Split(request, "\t");
  const auto argument = [&](Int32 index) { return ElementAt(fields, index); };
  if (argument(0) == "account") {
    user = argument(1);
    passwd = argument(2);
    Answer({{"status", 0}});
  }
  if (argument(0) == "authenticate") Authenticate(user, passwd);
  if (argument(0) == "check") Check(argument(1));
  if (argument(0) == "install") Install(argument(1), false);
  if (argument(0) == "watched install") Install(argument(1), true);
  if (argument(0) == "failure") FailureDialog(10'000'000);
  if (argument(0) == "authenticate lines") {
    RunLines({ForgetCredentials(), CredentialCheck(passwd, user)});
  }
  if (argument(0) == "check lines") {
    RunLines({CredentialCheck(passwd, user), MemberExtract(passwd, user, argument(1)),
              MemberRead(passwd, user)});
  }
  if (argument(0) == "install lines") {
    RunLines({ForgetCredentials(), CredentialCheck(passwd, user),
              FullExtract(passwd, user, argument(1))});
  }
}

}  // namespace

int main() {
  Now();
  RuntimeInit();
  initialize();
  drawn = new Drawn;
  auto* requests = new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, qApp);
  QObject::connect(requests, &QSocketNotifier::activated, qApp, [] {
    std::string line;
    if (!std::getline(std::cin, line)) _exit(0);
    Obey(line);
  });
  drawn->Next(IsAuthenticate, [](QWidget&) { Answer({{"ms", Now()}}); });
  Main();
  _exit(0);
}
