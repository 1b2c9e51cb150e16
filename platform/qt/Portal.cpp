#include "platform/qt/Portal.h"

#include <QCoreApplication>
#include <QDBusPendingCallWatcher>

#include "platform/runtime/Secrecy.h"

namespace zelto {

QDBusPendingCall CallPortal(const char* interface, const char* method,
                            const QVariantList& arguments) {
  const QString name = QString("org.freedesktop.portal.") + interface;
  return Call(QDBusConnection::sessionBus(),
              {"org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop", name}, method,
              arguments);
}

void HideMemoryAfterPortal() {
  const QStringList appearance{"org.freedesktop.appearance"};
  auto* answer = new QDBusPendingCallWatcher(CallPortal("Settings", "ReadAll", {appearance}), qApp);
  QObject::connect(answer, &QDBusPendingCallWatcher::finished, answer, [answer] {
    HideMemory();
    answer->deleteLater();
  });
}

}  // namespace zelto
