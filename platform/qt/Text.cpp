#include "platform/qt/Text.h"

#include <QRegularExpression>
#include <QStringEncoder>

namespace zelto {

namespace {

// Removes terminal control sequences: CSI sequences, OSC and other strings that end with BEL or ST,
// and two-character escapes.
void RemoveEscapeSequences(QString& text) {
  if (!text.contains(QChar(0x1B)) && !text.contains(QChar(0x9B))) return;
  static const QRegularExpression sequence(
      R"((\x1B\[|\x9B)[0-?]*[ -/]*[@-~]|\x1B[\]PX^_][^\x07\x1B\n]*(\x07|\x1B\\)|\x1B[ -/]*[0-~])");
  text.remove(sequence);
}

// Bidirectional controls would show another order of letters than that of the text.
bool IsHidden(QChar c) {
  if (c.category() == QChar::Other_Control) return c != QLatin1Char('\n') && c != QLatin1Char('\t');
  const char16_t code = c.unicode();
  const bool isMark = code == 0x061C || code == 0x200E || code == 0x200F;
  const bool isEmbedding = (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
  return isMark || isEmbedding || code == QChar::ByteOrderMark;
}

}  // namespace

QString ToDisplayText(const String& text) {
  const auto bytes = text.Bytes();
  QString shown = QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
  RemoveEscapeSequences(shown);
  shown.replace("\r\n", "\n").replace('\r', ' ');
  shown.removeIf(IsHidden);
  return shown;
}

QString ToolTip(const QString& text) {
  if (text.isEmpty()) return text;
  return "<span style='white-space: pre-wrap'>" + text.toHtmlEscaped() + "</span>";
}

// Encodes into the buffer of the String. The text can be a password, and another buffer would keep
// a copy of it.
String FromQString(const QString& text) {
  QStringEncoder encoder(QStringEncoder::Utf8);
  std::string bytes(static_cast<std::size_t>(encoder.requiredSpace(text.size())), '\0');
  const char* end = encoder.appendToBuffer(bytes.data(), text);
  bytes.resize(static_cast<std::size_t>(end - bytes.data()));
  return {std::move(bytes)};
}

}  // namespace zelto
