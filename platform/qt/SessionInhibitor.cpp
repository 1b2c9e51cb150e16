#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QSessionManager>

#include "platform/Toolkit.h"
#include "platform/qt/Text.h"

namespace zelto {

namespace {

constexpr char systemBus[] = "zelto-system";
constexpr char sessionBus[] = "zelto-session";
// The flags have the same values for the session manager and for the portal.
constexpr uint logoutAndSuspend = 1 | 4;

QDBusPendingCall Call(const char* bus, const char* service, const char* path, const char* interface,
                      const QVariantList& arguments) {
  auto message = QDBusMessage::createMethodCall(service, path, interface, "Inhibit");
  message.setArguments(arguments);
  return QDBusConnection(bus).asyncCall(message);
}

// Refuses a request of the X11 session manager, if it allows interaction, and alerts the user.
void Refuse(QSessionManager& manager) {
  if (!manager.allowsInteraction()) return;
  if (auto* window = QApplication::activeWindow()) QApplication::alert(window);
  manager.cancel();
}

}  // namespace

// Uses private connections. When a client closes its connection, the service releases the
// inhibition, even if the reply has not arrived yet.
class SessionInhibitor {
 public:
  explicit SessionInhibitor(const QString& reason)
      : mLogind(AskLogind(reason)), mSessionManager(AskSessionManager(reason)) {
    QObject::connect(&mSessionManager, &QDBusPendingCallWatcher::finished, &mSessionManager,
                     [this, reason] {
                       if (mSessionManager.isError()) AskPortal(reason);
                     });
    QObject::connect(qApp, &QGuiApplication::commitDataRequest, &mSessionManager, Refuse,
                     Qt::DirectConnection);
  }
  ~SessionInhibitor() {
    QDBusConnection::disconnectFromBus(systemBus);
    QDBusConnection::disconnectFromBus(sessionBus);
  }

 private:
  static QDBusPendingCall AskLogind(const QString& reason) {
    QDBusConnection::connectToBus(QDBusConnection::SystemBus, systemBus);
    return Call(systemBus, "org.freedesktop.login1", "/org/freedesktop/login1",
                "org.freedesktop.login1.Manager",
                {"shutdown:sleep", "ZELTO Group Update Utility", reason, "block"});
  }

  static QDBusPendingCall AskSessionManager(const QString& reason) {
    QDBusConnection::connectToBus(QDBusConnection::SessionBus, sessionBus);
    constexpr uint noWindow = 0;
    return Call(sessionBus, "org.gnome.SessionManager", "/org/gnome/SessionManager",
                "org.gnome.SessionManager",
                {QGuiApplication::desktopFileName(), noWindow, reason, logoutAndSuspend});
  }

  static void AskPortal(const QString& reason) {
    Call(sessionBus, "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
         "org.freedesktop.portal.Inhibit",
         {QString(), logoutAndSuspend, QVariantMap{{"reason", reason}}});
  }

  QDBusPendingCall mLogind;  // the reply owns the inhibiting descriptor
  QDBusPendingCallWatcher mSessionManager;
};

std::shared_ptr<SessionInhibitor> InhibitSessionEnd(const String& reason) {
  return std::make_shared<SessionInhibitor>(ToDisplayText(reason));
}

}  // namespace zelto
