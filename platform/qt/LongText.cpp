#include "platform/qt/LongText.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>

#include "platform/qt/Text.h"

namespace zelto {

namespace {

constexpr int linesToAStart = 256;
constexpr std::size_t longestLine = 1000;  // bytes; a longer one goes on in the next

// The byte behind the line that begins at the start.
std::size_t EndOf(std::string_view text, std::size_t start) {
  const auto line = text.substr(start, longestLine);
  const auto end = line.find('\n');
  if (end != std::string_view::npos) return start + end + 1;
  auto length = line.size();
  if (start + length == text.size()) return text.size();
  // Not within a character; a text of no characters at all is cut anywhere.
  while (length > longestLine - 4 && (text[start + length] & '\xC0') == '\x80') --length;
  return start + length;
}

}  // namespace

LongText::LongText(String text, QWidget* parent)
    : QAbstractScrollArea(parent), mText(std::move(text)) {
  const auto bytes = mText.Bytes();
  for (std::size_t start = 0; start < bytes.size(); start = EndOf(bytes, start)) {
    if (mLines++ % linesToAStart == 0) mStarts.push_back(start);
  }
  setFocusPolicy(Qt::StrongFocus);
  viewport()->setBackgroundRole(QPalette::Base);
  viewport()->setCursor(Qt::IBeamCursor);
  verticalScrollBar()->setRange(0, mLines);
  verticalScrollBar()->setValue(mLines);
  constexpr std::size_t described = 2000;  // bytes, at the end, where it stands what went wrong
  setAccessibleDescription(
      ToDisplayText(bytes.substr(bytes.size() - std::min(bytes.size(), described))));
}

void LongText::paintEvent(QPaintEvent*) {
  QPainter painter(viewport());
  const int height = fontMetrics().lineSpacing();
  int line = verticalScrollBar()->value();
  for (int top = 0; top < viewport()->height() && line < mLines; top += height, ++line) {
    const bool isSelected = line >= std::min(mFrom, mTo) && line <= std::max(mFrom, mTo);
    const QRect row(0, top, viewport()->width(), height);
    if (isSelected) painter.fillRect(row, palette().highlight());
    painter.setPen(palette().color(isSelected ? QPalette::HighlightedText : QPalette::Text));
    painter.drawText(4 - horizontalScrollBar()->value(), top + fontMetrics().ascent(),
                     ToDisplayText(LineAt(line)).remove('\n'));
  }
}

void LongText::resizeEvent(QResizeEvent*) {
  const int rows = std::max(viewport()->height() / fontMetrics().lineSpacing(), 1);
  const bool isAtEnd = verticalScrollBar()->value() == verticalScrollBar()->maximum();
  verticalScrollBar()->setRange(0, std::max(mLines - rows, 0));
  verticalScrollBar()->setPageStep(rows);
  if (isAtEnd) verticalScrollBar()->setValue(verticalScrollBar()->maximum());
  const int widest = fontMetrics().averageCharWidth() * static_cast<int>(longestLine);
  horizontalScrollBar()->setRange(0, std::max(widest - viewport()->width(), 0));
  horizontalScrollBar()->setPageStep(viewport()->width());
}

void LongText::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Copy)) return Copy();
  if (event->matches(QKeySequence::SelectAll)) return Select(0, mLines - 1);
  if (event->key() == Qt::Key_Home) return verticalScrollBar()->setValue(0);
  if (event->key() == Qt::Key_End) return verticalScrollBar()->setValue(mLines);
  QAbstractScrollArea::keyPressEvent(event);
}

void LongText::mousePressEvent(QMouseEvent* event) { Select(LineUnder(*event), LineUnder(*event)); }

void LongText::mouseMoveEvent(QMouseEvent* event) { Select(mFrom, LineUnder(*event)); }

std::size_t LongText::StartOf(int line) const {
  if (line >= mLines) return mText.Bytes().size();
  auto start = mStarts[static_cast<std::size_t>(line / linesToAStart)];
  for (int i = line % linesToAStart; i > 0; --i) start = EndOf(mText.Bytes(), start);
  return start;
}

std::string_view LongText::LineAt(int line) const {
  const auto start = StartOf(line);
  return mText.Bytes().substr(start, EndOf(mText.Bytes(), start) - start);
}

int LongText::LineUnder(const QMouseEvent& event) const {
  const int row = event.position().toPoint().y() / fontMetrics().lineSpacing();
  return std::clamp(verticalScrollBar()->value() + row, 0, mLines - 1);
}

void LongText::Select(int from, int to) {
  mFrom = from;
  mTo = to;
  viewport()->update();
}

void LongText::Copy() const {
  if (mFrom < 0) return;
  const auto start = StartOf(std::min(mFrom, mTo));
  const auto end = StartOf(std::max(mFrom, mTo) + 1);
  QGuiApplication::clipboard()->setText(ToDisplayText(mText.Bytes().substr(start, end - start)));
}

}  // namespace zelto
