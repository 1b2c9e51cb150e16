#include <QApplication>
#include <QDBusPendingCallWatcher>
#include <QSessionManager>

#include "platform/Toolkit.h"
#include "platform/qt/Portal.h"
#include "platform/qt/Text.h"

namespace zelto {

namespace {

constexpr char systemBus[] = "zelto-system";
constexpr char sessionBus[] = "zelto-session";
// The flags have the same values for the session manager and for the portal.
constexpr uint logoutAndSuspend = 1 | 4;
constexpr char portalToken[] = "installation";

// Refuses a request of the X11 session manager, if it allows interaction, and alerts the user.
void Refuse(QSessionManager& manager) {
  if (!manager.allowsInteraction()) return;
  if (auto* window = QApplication::activeWindow()) QApplication::alert(window);
  manager.cancel();
}

QDBusPendingCall AskLogind(const QString& reason) {
  const auto address =
      qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/var/run/dbus/system_bus_socket");
  return Call(
      ConnectToBus(address, systemBus),
      {"org.freedesktop.login1", "/org/freedesktop/login1", "org.freedesktop.login1.Manager"},
      "Inhibit", {"shutdown:sleep", "ZELTO Group Update Utility", reason, "block"});
}

QDBusPendingCall AskSessionManager(const QString& reason) {
  const auto address = qEnvironmentVariable(
      "DBUS_SESSION_BUS_ADDRESS", "unix:path=" + qEnvironmentVariable("XDG_RUNTIME_DIR") + "/bus");
  constexpr uint noWindow = 0;
  return Call(ConnectToBus(address, sessionBus),
              {"org.gnome.SessionManager", "/org/gnome/SessionManager", "org.gnome.SessionManager"},
              "Inhibit", {QGuiApplication::desktopFileName(), noWindow, reason, logoutAndSuspend});
}

QDBusPendingCall AskPortal(const QString& reason) {
  const QVariantMap options{{"handle_token", portalToken}, {"reason", reason}};
  return CallPortal("Inhibit", "Inhibit", {QString(), logoutAndSuspend, options});
}

// The portal forms the path of a request from the caller's name and token.
void EndPortalRequest() {
  const auto bus = QDBusConnection::sessionBus();
  const QString caller = bus.baseService().mid(1).replace('.', '_');
  Call(bus,
       {"org.freedesktop.portal.Desktop",
        "/org/freedesktop/portal/desktop/request/" + caller + '/' + portalToken,
        "org.freedesktop.portal.Request"},
       "Close");
}

}  // namespace

// Uses private connections. When a client closes its connection, the service releases the
// inhibition, even if the reply has not arrived yet. The portal knows only the toolkit's
// connection.
class SessionInhibitor {
 public:
  explicit SessionInhibitor(const QString& reason)
      : mLogind(AskLogind(reason)), mSessionManager(AskSessionManager(reason)) {
    QObject::connect(&mSessionManager, &QDBusPendingCallWatcher::finished, &mSessionManager,
                     [this, reason] {
                       mUsesPortal = mSessionManager.isError();
                       if (mUsesPortal) AskPortal(reason);
                     });
    QObject::connect(qApp, &QGuiApplication::commitDataRequest, &mSessionManager, Refuse,
                     Qt::DirectConnection);
  }
  ~SessionInhibitor() {
    if (mUsesPortal) EndPortalRequest();
    QDBusConnection::disconnectFromPeer(systemBus);
    QDBusConnection::disconnectFromPeer(sessionBus);
  }

 private:
  QDBusPendingCall mLogind;  // the reply owns the inhibiting descriptor
  QDBusPendingCallWatcher mSessionManager;
  bool mUsesPortal = false;
};

std::shared_ptr<SessionInhibitor> InhibitSessionEnd(const String& reason) {
  return std::make_shared<SessionInhibitor>(ToDisplayText(reason));
}

}  // namespace zelto
