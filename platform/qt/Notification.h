#pragma once

#include <QDBusPendingReply>
#include <QWidget>

namespace zelto {

// A notification of the desktop, until it is destroyed. Its default action raises the window. Has
// no effect if the desktop shows no notifications.
class Notification : public QObject {
  Q_OBJECT

 public:
  Notification(QWidget& window, const QString& text);
  ~Notification() override;

 private slots:
  void ActivationToken(uint id, const QString& token);
  void ActionInvoked(uint id, const QString& action);

 private:
  bool IsOwn(uint id) const {
    return mReply.isFinished() && mReply.isValid() && mReply.value() == id;
  }

  QWidget& mWindow;
  QDBusPendingReply<uint> mReply;
};

}  // namespace zelto
