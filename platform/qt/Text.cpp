#include "platform/qt/Text.h"

#include <algorithm>

namespace zelto {

QString Shown(const String& text) {
  const auto bytes = text.Bytes();
  QString shown = QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
  shown.removeIf([](QChar c) {
    return c.category() == QChar::Other_Control && c != QLatin1Char('\n') && c != QLatin1Char('\t');
  });
  return shown;
}

String FromShown(const QString& text) { return {text.toStdString()}; }

}  // namespace zelto
