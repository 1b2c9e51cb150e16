#include <poll.h>
#include <stdlib.h>
#include <unistd.h>

#include <QApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QDBusVirtualObject>
#include <QFile>
#include <QLibraryInfo>
#include <QThread>
#include <QTimer>
#include <atomic>

#include "platform/Files.h"
#include "tests/Fixtures.h"

using namespace zelto;

namespace {

// Stubs of the desktop's services on the bus of the test.
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
  QStringList ChosenFiles;  // empty if the user cancels
  std::atomic<bool> HasReportedVersion = false;

  bool HoldsLogind() const {
    pollfd end{.fd = mReading};
    // Once the client has closed its end, poll reports an event.
    return mReading >= 0 && poll(&end, 1, 0) == 0;
  }
  bool HoldsSession() const {
    return !mClient.isEmpty() && mBus.interface()->isServiceRegistered(mClient);
  }

  void Stop() { mRepeat->stop(); }

  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
    const QVariant answer = Answer(message);
    return answer.isValid() && bus.send(message.createReply(answer));
  }

 private:
  QVariant Answer(const QDBusMessage& message) {
    if (message.member() == "Get") return Version();
    if (message.member() == "OpenFile") return OpenFile();
    if (message.member() != "Inhibit") return {};
    QString call = message.interface();
    for (const auto& argument : message.arguments()) call += '|' + argument.toString();
    if (call.contains("portal")) {
      call += qdbus_cast<QVariantMap>(message.arguments().at(2))["reason"].toString();
    }
    Calls << call;
    return call.contains("login1") ? Descriptor() : Cookie(message);
  }

  QVariant Version() {
    HasReportedVersion = true;
    return QVariant::fromValue(QDBusVariant(4U));
  }

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

  QVariant OpenFile() {
    // Repeats the signal, because the client listens only after it has the reply to its call.
    QObject::connect(mRepeat, &QTimer::timeout, this, [this] {
      auto response =
          QDBusMessage::createSignal("/request", "org.freedesktop.portal.Request", "Response");
      response << (ChosenFiles.isEmpty() ? 1U : 0U) << QVariantMap{{"uris", ChosenFiles}};
      mBus.send(response);
    });
    mRepeat->start(20);
    return QVariant::fromValue(QDBusObjectPath("/request"));
  }

  QDBusConnection mBus =
      QDBusConnection::connectToBus(getenv("DBUS_SESSION_BUS_ADDRESS"), "services");
  int mReading = -1;
  QString mClient;
  QTimer* mRepeat = new QTimer(this);
};

// Starts a new process, because a process cannot change its bus.
void RunOnPrivateBus() {
  RunAgain(
      "dbus-run-session -- sh -c 'DBUS_SYSTEM_BUS_ADDRESS=$DBUS_SESSION_BUS_ADDRESS exec \"$@\"' "
      "sh",
      std::filesystem::read_symlink("/proc/self/exe"));
}

class DesktopServicesTest : public RecordTest {
 protected:
  // Installs an update. The installation ends when both inhibitions are in effect.
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

}  // namespace

TEST_F(DesktopServicesTest, InstallInhibitsShutdownSleepAndLogout) {
  if (!IsRunAgain()) return RunOnPrivateBus();
  const QString logind =
      "org.freedesktop.login1.Manager|shutdown:sleep|ZELTO Group Update Utility|"
      "Installing an update|block";
  const QString session =
      "org.gnome.SessionManager|local.zelto.update_utility|0|Installing an update|5";
  {
    Services services({"org.freedesktop.login1", "org.gnome.SessionManager"});
    Install(services, "true", "Install Another");
    Install(services, "exit 2", "OK");
    EXPECT_EQ(services.Calls, QStringList({logind, session, logind, session}));
  }
  Services services({"org.freedesktop.login1", "org.freedesktop.portal.Desktop"});
  Install(services, "true", "Install Another");
  EXPECT_EQ(services.Calls,
            QStringList({logind, "org.freedesktop.portal.Inhibit||5|Installing an update"}));
}

TEST(DesktopServices, DesktopOpenDialogIsUsed) {
  const QString plugins = QLibraryInfo::path(QLibraryInfo::PluginsPath);
  if (!QFile::exists(plugins + "/platformthemes/libqxdgdesktopportal.so")) {
    GTEST_SKIP() << "qt6-xdgdesktopportal-platformtheme is not installed";
  }
  setenv("QT_QPA_PLATFORMTHEME", "xdgdesktopportal", 1);
  if (!IsRunAgain()) return RunOnPrivateBus();
  Services services({"org.freedesktop.portal.Desktop"});
  QThread thread;  // because Qt blocks on some of the replies
  services.moveToThread(&thread);
  QObject::connect(
      &thread, &QThread::finished, &services, [&] { services.Stop(); }, Qt::DirectConnection);
  thread.start();
  const ApplicationFixture application;
  Until([&] { return services.HasReportedVersion.load(); });
  // Replies of a service arrive in order, so Qt has the version before the reply to this call.
  QDBusConnection::sessionBus().call(
      QDBusMessage::createMethodCall("org.freedesktop.portal.Desktop", "/", "any.name", "Get"));
  QApplication::processEvents({}, 1000);  // one pass can leave some events
  const auto open = [] { return RuntimeGetOpenFolderItem("gzip compressed tar file"); };
  EXPECT_FALSE(open());
  services.ChosenFiles = QStringList(QString("file:///x/%C3%A4 b.TGZ"));
  const auto item = open();
  EXPECT_EQ(item ? Bytes(item->NativePath()) : "none", "/x/\xC3\xA4 b.TGZ");
  thread.quit();
  thread.wait();
}
