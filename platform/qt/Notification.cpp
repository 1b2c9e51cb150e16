#include "platform/qt/Notification.h"

#include <QCoreApplication>
#include <QDBusPendingReply>
#include <QGuiApplication>
#include <QWindow>

#include "platform/qt/Bus.h"

namespace zelto {

namespace {

const BusObject& Service() {
  static const BusObject service{"org.freedesktop.Notifications", "/org/freedesktop/Notifications",
                                 "org.freedesktop.Notifications"};
  return service;
}

QDBusPendingCall Notify(const QString& text) {
  constexpr uint newNotification = 0;
  constexpr int serversTimeout = -1;
  return Call(QDBusConnection::sessionBus(), Service(), "Notify",
              {"ZELTO Group Update Utility", newNotification, "zelto-update-utility", text,
               QString(), QStringList{"default", "Show"},
               QVariantMap{{"desktop-entry", QGuiApplication::desktopFileName()}}, serversTimeout});
}

void Close(const QDBusPendingReply<uint>& reply) {
  if (reply.isValid()) {
    Call(QDBusConnection::sessionBus(), Service(), "CloseNotification", {reply.value()});
  }
}

}  // namespace

Notification::Notification(QWidget& window, const QString& text)
    : mWindow(window), mAnswer(new QDBusPendingCallWatcher(Notify(text), qApp)) {
  // Without the name of the service, because connect would wait for the bus to look it up.
  const auto follow = [this](const char* signal, const char* slot) {
    QDBusConnection::sessionBus().connect({}, Service().Path, Service().Interface, signal, this,
                                          slot);
  };
  follow("ActivationToken", SLOT(ActivationToken(uint, QString)));
  follow("ActionInvoked", SLOT(ActionInvoked(uint, QString)));
}

Notification::~Notification() {
  const auto close = [answer = mAnswer] {
    Close(*answer);
    answer->deleteLater();
  };
  if (mAnswer->isFinished()) {
    close();
  } else {
    connect(mAnswer, &QDBusPendingCallWatcher::finished, mAnswer, close);
  }
}

bool Notification::IsOwn(uint id) const {
  const QDBusPendingReply<uint> reply = *mAnswer;
  return reply.isValid() && reply.value() == id;
}

// Precedes ActionInvoked. On Wayland, a window needs the token to activate itself.
void Notification::ActivationToken(uint id, const QString& token) {
  if (IsOwn(id)) qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
}

void Notification::ActionInvoked(uint id, const QString&) {
  if (!IsOwn(id)) return;
  const auto* dialog = mWindow.windowHandle();
  auto* parent = dialog->transientParent();
  if (parent && parent->windowState() == Qt::WindowMinimized) parent->showNormal();
  mWindow.raise();
  mWindow.activateWindow();
}

}  // namespace zelto
