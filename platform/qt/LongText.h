#pragma once

#include <QListView>

#include "platform/runtime/String.h"

namespace zelto {

// Shows plain text of any size line by line and lays out no more than what is visible. Lines can be
// selected and copied. Starts at the end.
class LongText : public QListView {
 public:
  LongText(const String& text, QWidget* parent);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;
};

}  // namespace zelto
