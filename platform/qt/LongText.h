#pragma once

#include <QListView>

namespace zelto {

// Returns a view of plain text of any size, owned by `parent`. The view lays out only the visible
// lines and shows the end of the text first. Lines can be selected and copied.
QListView* NewLongText(const QString& text, QWidget* parent);

}  // namespace zelto
