#pragma once

#include <QListView>

#include "platform/runtime/String.h"

namespace zelto {

// Shows plain text of any size and lays out only the visible lines. Lines can be selected and
// copied. At first, the end of the text is visible.
class LongText : public QListView {
 public:
  LongText(const String& text, QWidget* parent);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;
};

}  // namespace zelto
