#include <poll.h>
#include <stdlib.h>
#include <unistd.h>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>
#include <QDBusVirtualObject>

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

  QStringList Calls;

  // The number of services whose inhibition is in effect.
  int Holding() const {
    pollfd end{.fd = mReading};
    // Once the client has closed its end, poll reports an event.
    const bool isLogindHolding = mReading >= 0 && poll(&end, 1, 0) == 0;
    return isLogindHolding + (!mClient.isEmpty() && mBus.interface()->isServiceRegistered(mClient));
  }

  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
    if (message.member() != "Inhibit") return false;
    QString call = message.interface();
    for (const auto& argument : message.arguments()) call += '|' + argument.toString();
    if (call.contains("portal")) {
      call += qdbus_cast<QVariantMap>(message.arguments().at(2))["reason"].toString();
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
  int mReading = -1;
  QString mClient;
};

class DesktopServicesTest : public RecordTest {
 protected:
  // Installs an update. The installation ends when both inhibitions are in effect.
  void Install(Services& services, const std::string& end, const std::string& button) {
    Choose(mStubs.Update("a.gz", GoodRecord));
    mStubs.Script("tar", "until [ -e " + mStubs.Path("go") + " ]; do sleep 0.01; done; " + end);
    const auto held =
        Once([&] { return services.Holding() == 2; }, [&] { Write(mStubs.Path("go"), ""); });
    WhenModal([&](QWidget&) {
      Until([&] { return services.Holding() == 0; });
      WhenModalPress(button);
    });
    InvokeHandler([&] { mWindow->pbUpdate()->Raise("Action"); });
    EXPECT_FALSE(held);
    mStubs.Script("tar", "exec /bin/tar \"$@\"");
    std::filesystem::remove(mStubs.Path("go"));
  }
};

}  // namespace

// Starts a new process, because a process cannot change its bus.
TEST_F(DesktopServicesTest, InstallInhibitsShutdownSleepAndLogout) {
  if (!IsRunAgain()) {
    return RunAgain(
        "dbus-run-session -- sh -c 'DBUS_SYSTEM_BUS_ADDRESS=$DBUS_SESSION_BUS_ADDRESS exec \"$@\"' "
        "sh",
        std::filesystem::read_symlink("/proc/self/exe"));
  }
  const QString logind =
      "org.freedesktop.login1.Manager|shutdown:sleep|ZELTO Group Update Utility|"
      "Installing an update|block";
  const QString session =
      "org.gnome.SessionManager|local.zelto.update_utility|0|Installing an update|5";
  {
    Services services("org.gnome.SessionManager");
    Install(services, "true", "Install Another");
    Install(services, "exit 2", "OK");
    EXPECT_EQ(services.Calls, QStringList({logind, session, logind, session}));
  }
  Services services("org.freedesktop.portal.Desktop");
  Install(services, "true", "Install Another");
  EXPECT_EQ(services.Calls,
            QStringList({logind, "org.freedesktop.portal.Inhibit||5|Installing an update"}));
}
