#include "platform/qt/LongText.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QShortcut>
#include <QStringListModel>
#include <algorithm>

namespace zelto {

namespace {

constexpr qsizetype longestRow = 1000;  // characters; a longer line continues in the next row

QStringList RowsOf(const QString& text) {
  QStringList rows;
  for (QStringView line : QStringView(text).split('\n')) {
    for (; line.size() >= longestRow; line = line.mid(longestRow)) {
      rows << line.left(longestRow).toString();
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
    copied += index.data().toString();
    if (index.data().toString().size() < longestRow && index != selected.constLast())
      copied += '\n';
  }
  if (!selected.isEmpty()) QGuiApplication::clipboard()->setText(copied);
}

}  // namespace

QListView* NewLongText(const QString& text, QWidget* parent) {
  auto* view = new QListView(parent);
  view->setModel(new QStringListModel(RowsOf(text), view));
  const auto& metrics = view->fontMetrics();
  view->setGridSize({metrics.averageCharWidth() * int(longestRow), metrics.lineSpacing()});
  view->setEditTriggers(QAbstractItemView::NoEditTriggers);
  view->setSelectionMode(QAbstractItemView::ExtendedSelection);
  view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  view->setTextElideMode(Qt::ElideNone);
  view->scrollToBottom();
  auto* copy = new QShortcut(QKeySequence::Copy, view, nullptr, nullptr, Qt::WidgetShortcut);
  QObject::connect(copy, &QShortcut::activated, view, [view] { CopySelection(*view); });
  return view;
}

}  // namespace zelto
