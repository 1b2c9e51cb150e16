#include "platform/qt/Text.h"

#include <QStringEncoder>

namespace zelto {

QString ToDisplayText(const String& text) {
  const auto bytes = text.Bytes();
  QString shown = QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
  shown.removeIf([](QChar c) {
    return c.category() == QChar::Other_Control && c != QLatin1Char('\n') && c != QLatin1Char('\t');
  });
  return shown;
}

QString ToolTip(const QString& text) {
  if (text.isEmpty()) return text;
  return "<span style='white-space: pre-wrap'>" + text.toHtmlEscaped() + "</span>";
}

// Straight into the string's own bytes, since the text may be a password.
String FromQString(const QString& text) {
  QStringEncoder encoder(QStringEncoder::Utf8);
  std::string bytes(static_cast<std::size_t>(encoder.requiredSpace(text.size())), '\0');
  const char* end = encoder.appendToBuffer(bytes.data(), text);
  bytes.resize(static_cast<std::size_t>(end - bytes.data()));
  return {std::move(bytes)};
}

}  // namespace zelto
