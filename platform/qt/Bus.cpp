#include "platform/qt/Bus.h"

#include <QDBusMessage>

namespace zelto {

QDBusPendingCall Call(const QDBusConnection& bus, const BusObject& object, const char* method,
                      const QVariantList& arguments) {
  auto message =
      QDBusMessage::createMethodCall(object.Service, object.Path, object.Interface, method);
  message.setArguments(arguments);
  return bus.asyncCall(message);
}

QDBusConnection ConnectToBus(const QString& address, const char* name) {
  auto bus = QDBusConnection::connectToPeer(address, name);
  Call(bus, {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus"}, "Hello");
  return bus;
}

}  // namespace zelto
