#include "platform/qt/LongText.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QShortcut>
#include <QStringListModel>
#include <algorithm>

namespace zelto {

namespace {

constexpr qsizetype longestRow = 500;  // characters; a row of this length continues in the next row

QStringList RowsOf(const QString& text) {
  QStringList rows;
  for (QStringView line : QStringView(text).split('\n')) {
    while (line.size() >= longestRow) {
      // A row must not end within a surrogate pair.
      const auto length = longestRow + (line[longestRow - 1].isHighSurrogate() ? 1 : 0);
      rows << line.left(length).toString();
      line = line.mid(length);
    }
    rows << line.toString();
  }
  return rows;
}

void CopySelection(const QListView& view) {
  auto selected = view.selectionModel()->selectedRows();
  std::sort(selected.begin(), selected.end());
  QString copied;
  for (const auto& index : selected) {
    const QString row = index.data().toString();
    copied += row;
    if (row.size() < longestRow && index != selected.constLast()) copied += '\n';
  }
  if (!copied.isEmpty()) QGuiApplication::clipboard()->setText(copied);
}

}  // namespace

QListView* NewLongText(const QString& text, QWidget* parent) {
  auto* view = new QListView(parent);
  view->setModel(new QStringListModel(RowsOf(text), view));
  const auto& metrics = view->fontMetrics();
  constexpr int widest = 2 * int(longestRow);  // a full-width character takes the space of two
  view->setGridSize({widest * metrics.averageCharWidth(), metrics.lineSpacing()});
  view->setEditTriggers(QAbstractItemView::NoEditTriggers);
  view->setSelectionMode(QAbstractItemView::ExtendedSelection);
  view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  view->setTextElideMode(Qt::ElideNone);
  view->scrollToBottom();
  new QShortcut(
      QKeySequence::Copy, view, view, [view] { CopySelection(*view); }, Qt::WidgetShortcut);
  return view;
}

}  // namespace zelto
