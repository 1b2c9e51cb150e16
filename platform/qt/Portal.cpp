#include "platform/qt/Portal.h"

#include <QApplication>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QPalette>

#include "platform/runtime/Secrecy.h"

namespace zelto {

namespace {

constexpr auto appearance = "org.freedesktop.appearance";

QPalette DarkColours() {
  QPalette colours(QColor(0x32, 0x32, 0x32));
  colours.setColor(QPalette::Base, QColor(0x24, 0x24, 0x24));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    colours.setColor(QPalette::Disabled, role, Qt::gray);
  }
  return colours;
}

// Qt's themes for GNOME keep their light colours on a dark desktop. Before 6.8, Qt's window frames
// would also stay light.
void AdoptColourScheme(const QDBusMessage& answer) {
  if (QT_VERSION < QT_VERSION_CHECK(6, 8, 0)) return;
  if (answer.signature() != "a{sa{sv}}") return;  // the cast crashes on some other types
  const auto settings = qdbus_cast<QMap<QString, QVariantMap>>(answer.arguments().value(0));
  const bool isDark = settings.value(appearance).value("color-scheme").toUInt() == 1;
  const bool isShownLight = QGuiApplication::palette().window().color().lightness() > 127;
  if (isDark && isShownLight) QApplication::setPalette(DarkColours());
}

}  // namespace

QDBusPendingCall CallPortal(const char* interface, const char* method,
                            const QVariantList& arguments) {
  const QString name = QString("org.freedesktop.portal.") + interface;
  return Call(QDBusConnection::sessionBus(),
              {"org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop", name}, method,
              arguments);
}

void ReadPortalSettings() {
  const auto call = CallPortal("Settings", "ReadAll", {QStringList(appearance)});
  auto* answer = new QDBusPendingCallWatcher(call, qApp);
  QObject::connect(answer, &QDBusPendingCallWatcher::finished, answer, [answer] {
    HideMemory();
    AdoptColourScheme(answer->reply());
    answer->deleteLater();
  });
}

}  // namespace zelto
