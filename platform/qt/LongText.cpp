#include "platform/qt/LongText.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <algorithm>

#include "platform/qt/Text.h"

namespace zelto {

namespace {

constexpr std::size_t longestLine = 1000;  // bytes; a longer line continues in the next row

// The end of the row that begins at `start`.
std::size_t EndOfRow(std::string_view text, std::size_t start) {
  const auto line = text.substr(start, longestLine);
  const auto end = line.find('\n');
  if (end != std::string_view::npos) return start + end + 1;
  auto length = line.size();
  if (start + length == text.size()) return text.size();
  // A row must not end within a UTF-8 character.
  while (length > longestLine - 4 && (text[start + length] & '\xC0') == '\x80') --length;
  return start + length;
}

class Rows : public QAbstractListModel {
 public:
  Rows(String text, QSize rowSize, QObject* parent)
      : QAbstractListModel(parent), mText(std::move(text)), mRowSize(rowSize) {
    const auto bytes = mText.Bytes();
    for (std::size_t start = 0; start < bytes.size(); start = EndOfRow(bytes, start)) {
      mStarts.push_back(start);
    }
    mStarts.push_back(bytes.size());
  }

  int rowCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : static_cast<int>(mStarts.size()) - 1;
  }

  QVariant data(const QModelIndex& index, int role) const override {
    if (role == Qt::DisplayRole) return Text(index.row(), index.row()).remove('\n');
    return role == Qt::SizeHintRole ? mRowSize : QVariant();
  }

  QString Text(int first, int last) const {
    const auto start = mStarts.at(static_cast<std::size_t>(first));
    const auto end = mStarts.at(static_cast<std::size_t>(last) + 1);
    return ToDisplayText(mText.Bytes().substr(start, end - start));
  }

 private:
  String mText;
  QSize mRowSize;
  std::vector<std::size_t> mStarts;  // byte offsets of the rows and of the end
};

}  // namespace

LongText::LongText(const String& text, QWidget* parent) : QListView(parent) {
  const int widest = fontMetrics().averageCharWidth() * static_cast<int>(longestLine);
  setModel(new Rows(text, QSize(widest, fontMetrics().lineSpacing()), this));
  setUniformItemSizes(true);
  setSelectionMode(ExtendedSelection);
  setHorizontalScrollMode(ScrollPerPixel);
  setTextElideMode(Qt::ElideNone);
}

void LongText::keyPressEvent(QKeyEvent* event) {
  if (!event->matches(QKeySequence::Copy)) return QListView::keyPressEvent(event);
  auto ranges = selectionModel()->selection();
  std::sort(ranges.begin(), ranges.end(),
            [](const auto& a, const auto& b) { return a.top() < b.top(); });
  QString copied;
  for (const auto& range : ranges) {
    copied += static_cast<const Rows*>(model())->Text(range.top(), range.bottom());
  }
  if (!copied.isEmpty()) QGuiApplication::clipboard()->setText(copied);
}

void LongText::showEvent(QShowEvent* event) {
  QListView::showEvent(event);
  scrollToBottom();
}

}  // namespace zelto
