#include "platform/qt/StartMessages.h"

#include <QStringList>
#include <QtGlobal>
#include <cstdio>
#include <cstdlib>

namespace zelto {

namespace {

QStringList messages;

// The first message gives the reason. The fatal message only gives advice about plug-ins.
void Collect(QtMsgType type, const QMessageLogContext&, const QString& message) {
  messages += message.simplified();
  if (type != QtFatalMsg) return;
  std::fprintf(stderr, "zelto-update-utility: no display can be opened: %s\n",
               qUtf8Printable(messages.front()));
  std::_Exit(EXIT_FAILURE);
}

}  // namespace

void CollectStartMessages(const std::function<void()>& start) {
  qInstallMessageHandler(Collect);
  start();
  qInstallMessageHandler(nullptr);
  for (const auto& message : messages) qWarning("%s", qUtf8Printable(message));
  messages.clear();
}

}  // namespace zelto
