#include <poll.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <QLocalServer>
#include <QtDBus>

#include "tests/Fixtures.h"

using namespace zelto;

namespace {

// Stubs of logind and of one session service on the bus of the test.
class Services : public QDBusVirtualObject {
 public:
  explicit Services(const QString& session) {
    EXPECT_TRUE(mBus.registerVirtualObject("/", this, QDBusConnection::SubPath));
    for (const auto& name : {QString("org.freedesktop.login1"), session}) {
      EXPECT_TRUE(mBus.registerService(name));
    }
  }
  ~Services() override {
    mBus.unregisterObject("/", QDBusConnection::UnregisterTree);
    QDBusConnection::disconnectFromBus("services");
  }

  QStringList Calls;  // on two connections, so in any order
  QStringList Notifications;
  QVariant Settings;  // what the portal answers; if invalid, it does not answer

  void InvokeNotification() {
    const auto signal = QDBusMessage::createSignal(
        "/org/freedesktop/Notifications", "org.freedesktop.Notifications", "ActionInvoked");
    mBus.send(QDBusMessage(signal) << mNotification << "default");
  }

  // The number of services whose inhibition is in effect.
  int Holding() const {
    pollfd end{.fd = mReading};
    // Once the client has closed its end, poll reports an event.
    const bool isLogindHolding = mReading >= 0 && poll(&end, 1, 0) == 0;
    return isLogindHolding + (!mClient.isEmpty() && mBus.interface()->isServiceRegistered(mClient));
  }

  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
    if (message.member() == "Close" && message.path() == mRequest) mClient.clear();
    if (message.member() == "ReadAll")
      return !Settings.isValid() || bus.send(message.createReply(Settings));
    if (message.member() == "CloseNotification") Notifications.clear();
    if (message.member() == "Notify") {
      Notifications << message.arguments().at(3).toString();
      return bus.send(message.createReply(mNotification));
    }
    if (message.member() != "Inhibit") return false;
    QString call = message.interface();
    for (const auto& argument : message.arguments()) call += '|' + argument.toString();
    if (call.contains("portal")) {
      const auto options = qdbus_cast<QVariantMap>(message.arguments().at(2));
      call += options["reason"].toString();
      mRequest = "/org/freedesktop/portal/desktop/request/" +
                 message.service().mid(1).replace('.', '_') + '/' +
                 options["handle_token"].toString();
    }
    Calls << call;
    if (!call.contains("login1")) {
      mClient = message.service();
      return bus.send(message.createReply(7U));
    }
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    mReading = ends[0];
    const QDBusUnixFileDescriptor descriptor(ends[1]);
    close(ends[1]);
    return bus.send(message.createReply(QVariant::fromValue(descriptor)));
  }

 private:
  QDBusConnection mBus =
      QDBusConnection::connectToBus(getenv("DBUS_SESSION_BUS_ADDRESS"), "services");
  const QVariant mNotification = 5U;
  int mReading = -1;
  QString mClient;
  QString mRequest;  // the object of the portal that ends the inhibition
};

class DesktopServicesTest : public WindowTest<> {
 protected:
  // Installs an update. `tar` ends with the status when both inhibitions are in effect.
  void Install(const Services& services, int status, const std::string& button) {
    mStubs.Script("tar", mStubs.Blocker() + "; exit " + std::to_string(status));
    const auto held = Once([&] { return services.Holding() == 2; }, [this] { mStubs.Release(); });
    WhenModal([&](QWidget&) {
      Until([&] { return services.Holding() == 0; });
      WhenModalPress(button);
    });
    Press(mWindow->pbUpdate());
    EXPECT_FALSE(held);
  }
};

// Runs the test in a new process, because a process cannot change its bus. The bus starts no
// services.
void RunOnPrivateBus(const StubPrograms& stubs) {
  Write(stubs.Path("bus.conf"),
        "<busconfig><listen>unix:tmpdir=/tmp</listen><policy context='default'>"
        "<allow send_destination='*'/><allow receive_sender='*'/><allow "
        "own='*'/></policy></busconfig>");
  RunAgain("dbus-run-session --config-file=" + stubs.Path("bus.conf") +
           " -- sh -c 'DBUS_SYSTEM_BUS_ADDRESS=$DBUS_SESSION_BUS_ADDRESS exec \"$@\"' sh");
}

}  // namespace

TEST_F(DesktopServicesTest, InstallInhibitsShutdownSleepAndLogout) {
  if (!IsRunAgain()) return RunOnPrivateBus(mStubs);
  const QString logind =
      "org.freedesktop.login1.Manager|shutdown:sleep|ZELTO Group Update Utility|"
      "Installing an update|block";
  const QString session =
      "org.gnome.SessionManager|local.zelto.update_utility|0|Installing an update|5";
  {
    Services services("org.gnome.SessionManager");
    Install(services, 0, "Install Another");
    Install(services, 2, "OK");
    services.Calls.sort();
    EXPECT_EQ(services.Calls, QStringList({logind, logind, session, session}));
  }
  Services services("org.freedesktop.portal.Desktop");
  Install(services, 0, "Install Another");
  services.Calls.sort();
  EXPECT_EQ(services.Calls,
            QStringList({logind, "org.freedesktop.portal.Inhibit||5|Installing an update"}));
}

TEST_F(DesktopServicesTest, BusThatNeverAnswersDoesNotDelayAnInstallation) {
  QLocalServer bus;
  EXPECT_TRUE(bus.listen(QString::fromStdString(mStubs.Path("bus"))));
  qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + bus.fullServerName().toUtf8());
  qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + bus.fullServerName().toUtf8());
  mStubs.Script("tar", "");
  QElapsedTimer timer;
  timer.start();
  WhenModalPress("Install Another");
  Press(mWindow->pbUpdate());
  EXPECT_LT(timer.elapsed(), 10'000);
}

TEST_F(DesktopServicesTest, OutcomeIsNotifiedUnlessItsWindowIsActive) {
  if (!IsRunAgain()) return RunOnPrivateBus(mStubs);
  Services services("org.freedesktop.Notifications");
  mStubs.Script("tar", "");
  QWidget other;
  WhenModal([&](QWidget& dialog) {
    mTop->showMinimized();
    other.show();
    other.activateWindow();
    Until([&] { return services.Notifications == QStringList("Update Completed Successfullly"); });
    services.InvokeNotification();
    Until([&] { return dialog.isActiveWindow() && !mTop->isMinimized(); });
    WhenModalPress("Install Another");
  });
  Press(mWindow->pbUpdate());
  Until([&] { return services.Notifications.isEmpty(); });
  WhenModal([&](QWidget&) {
    QTest::qWait(700);  // longer than an inactive dialog waits
    EXPECT_TRUE(services.Notifications.isEmpty());
    WhenModalPress("Install Another");
  });
  Press(mWindow->pbUpdate());
}

TEST(Memory, IsHiddenAtTheFirstKeyOfAPasswordIfThePortalDoesNotAnswer) {
  const StubPrograms stubs;
  if (!IsRunAgain()) return RunOnPrivateBus(stubs);
  Services portal("org.freedesktop.portal.Desktop");
  const ApplicationFixture application;
  WPerm()->Show();
  QTest::qWait(100);
  EXPECT_EQ(prctl(PR_GET_DUMPABLE), 1);
  QTest::keyClick(&ControlWidget(*TopLevel("Authenticate"), "passwd"), Qt::Key_X);
  EXPECT_EQ(prctl(PR_GET_DUMPABLE), 0);
}

TEST(Portal, AnswerOfADarkDesktopGivesDarkColoursAndHidesMemory) {
  if (QT_VERSION < QT_VERSION_CHECK(6, 8, 0)) GTEST_SKIP() << "Qt's window frames stay light";
  const StubPrograms stubs;
  if (!IsRunAgain()) return RunOnPrivateBus(stubs);
  Services portal("org.freedesktop.portal.Desktop");
  using Groups = QMap<QString, QVariantMap>;
  qDBusRegisterMetaType<Groups>();
  portal.Settings =
      QVariant::fromValue(Groups{{"org.freedesktop.appearance", {{"color-scheme", 1U}}}});
  const ApplicationFixture application;
  Until([] { return QGuiApplication::palette().window().color().lightness() < 127; });
  EXPECT_EQ(prctl(PR_GET_DUMPABLE), 0);
}

TEST(Portal, AnswerOfAnotherTypeOnlyHidesMemory) {
  const StubPrograms stubs;
  if (!IsRunAgain()) return RunOnPrivateBus(stubs);
  Services portal("org.freedesktop.portal.Desktop");
  portal.Settings = QVariantMap{{"org.freedesktop.appearance", 1U}};
  const ApplicationFixture application;
  Until([] { return prctl(PR_GET_DUMPABLE) == 0; });
}
