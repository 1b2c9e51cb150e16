#include <poll.h>
#include <stdlib.h>
#include <unistd.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>
#include <QDBusVirtualObject>

#include "tests/Fixtures.h"

using namespace zelto;

namespace {

// All services that can inhibit, on the bus that the test runs on.
class Services : public QDBusVirtualObject {
 public:
  explicit Services(const QStringList& names) {
    EXPECT_TRUE(mBus.registerVirtualObject("/", this, QDBusConnection::SubPath));
    for (const auto& name : names) EXPECT_TRUE(mBus.registerService(name));
  }
  ~Services() override {
    mBus.unregisterObject("/", QDBusConnection::UnregisterTree);
    QDBusConnection::disconnectFromBus("services");
  }

  QStringList Calls;

  bool HoldsLogind() const {
    pollfd end{.fd = mReading};
    return mReading >= 0 && poll(&end, 1, 0) == 0;  // a closed descriptor is reported
  }
  bool HoldsSession() const {
    return !mClient.isEmpty() && mBus.interface()->isServiceRegistered(mClient);
  }

  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
    QString call = message.interface();
    for (const auto& argument : message.arguments()) call += '|' + argument.toString();
    Calls << call;
    if (call.contains("portal")) {
      Calls.back() += qdbus_cast<QVariantMap>(message.arguments().at(2))["reason"].toString();
    }
    return bus.send(message.createReply(call.contains("login1") ? Descriptor() : Cookie(message)));
  }

 private:
  QVariant Descriptor() {
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    mReading = ends[0];
    QDBusUnixFileDescriptor descriptor(ends[1]);
    close(ends[1]);
    return QVariant::fromValue(descriptor);
  }
  QVariant Cookie(const QDBusMessage& message) {
    mClient = message.service();
    return 7U;
  }

  QDBusConnection mBus =
      QDBusConnection::connectToBus(getenv("DBUS_SESSION_BUS_ADDRESS"), "services");
  int mReading = -1;
  QString mClient;
};

class SessionInhibitorTest : public WindowTest<> {
 protected:
  ~SessionInhibitorTest() override { std::filesystem::remove("/tmp/.KVX.Content"); }

  // Lets an installation end once both services inhibit.
  void Install(Services& services, const std::string& end, const std::string& button) {
    Choose(mStubs.Update("a.gz", GoodRecord));
    mStubs.Script("tar", "until [ -e " + mStubs.Path("go") + " ]; do sleep 0.01; done; " + end);
    const auto held = Once([&] { return services.HoldsLogind() && services.HoldsSession(); },
                           [&] { Write(mStubs.Path("go"), ""); });
    WhenModal([&](QWidget&) {
      Until([&] { return !services.HoldsLogind() && !services.HoldsSession(); });
      WhenModalPress(button);
    });
    InvokeHandler([&] { mWindow->pbUpdate()->Raise("Action"); });
    EXPECT_FALSE(held);
    mStubs.Script("tar", "exec /bin/tar \"$@\"");
    std::filesystem::remove(mStubs.Path("go"));
  }
};

const QString Logind =
    "org.freedesktop.login1.Manager|shutdown:sleep|ZELTO Group Update Utility|"
    "Installing an update|block";

}  // namespace

// In a second process, since a process keeps to the first bus that it meets.
TEST_F(SessionInhibitorTest, HoldsShutdownSleepAndLogoutDuringAnInstallation) {
  if (!getenv("ZELTO_BUS")) {
    const std::string command =
        "dbus-run-session -- sh -c 'DBUS_SYSTEM_BUS_ADDRESS=$DBUS_SESSION_BUS_ADDRESS ZELTO_BUS=1 "
        "exec /proc/" +
        std::to_string(getpid()) + "/exe --gtest_filter=SessionInhibitorTest.*' >" +
        mStubs.Path("said") + " 2>&1";
    EXPECT_EQ(system(command.c_str()), 0) << Read(mStubs.Path("said"));
    return;
  }
  {
    Services services({"org.freedesktop.login1", "org.gnome.SessionManager"});
    Install(services, "true", "Install Another");
    Install(services, "exit 2", "OK");
    const QString session =
        "org.gnome.SessionManager|zelto-update-utility|0|Installing an update|5";
    EXPECT_EQ(services.Calls, QStringList({Logind, session, Logind, session}));
  }
  Services services({"org.freedesktop.login1", "org.freedesktop.portal.Desktop"});
  Install(services, "true", "Install Another");
  EXPECT_EQ(services.Calls, QStringList({Logind,
                                         "org.freedesktop.portal.Inhibit||5|"
                                         "Installing an update"}));
}
