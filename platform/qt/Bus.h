#pragma once

#include <QDBusConnection>
#include <QDBusPendingCall>

namespace zelto {

// An object of a service on a bus, and one of its interfaces.
struct BusObject {
  QString Service;
  QString Path;
  QString Interface;
};

// Calls a method without waiting for the answer.
QDBusPendingCall Call(const QDBusConnection& bus, const BusObject& object, const char* method,
                      const QVariantList& arguments = {});

// Connects to a bus without waiting for it, unlike QDBusConnection::connectToBus, which blocks
// until the bus answers. End the connection with QDBusConnection::disconnectFromPeer.
QDBusConnection ConnectToBus(const QString& address, const char* name);

}  // namespace zelto
