#pragma once

#include <QDBusPendingCallWatcher>
#include <QWidget>

namespace zelto {

// A notification of the desktop, until it is destroyed. Its default action raises the window. Has
// no effect if the desktop shows no notifications.
class Notification : public QObject {
  Q_OBJECT

 public:
  Notification(QWidget& window, const QString& text);
  ~Notification() override;

 private:
  Q_SLOT void ActivationToken(uint id, const QString& token);
  Q_SLOT void ActionInvoked(uint id, const QString& action);
  bool IsOwn(uint id) const;

  QWidget& mWindow;
  QDBusPendingCallWatcher* mAnswer;
};

}  // namespace zelto
