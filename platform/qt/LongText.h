#pragma once

#include <QAbstractScrollArea>
#include <string_view>
#include <vector>

#include "platform/runtime/String.h"

namespace zelto {

// Shows plain text of any size, of which it lays out no more than what is visible. Whole lines can
// be selected, with the mouse or all at once, and copied. Starts at the end.
class LongText : public QAbstractScrollArea {
 public:
  LongText(String text, QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  std::size_t StartOf(int line) const;
  std::string_view LineAt(int line) const;
  int LineUnder(const QMouseEvent& event) const;
  void Select(int from, int to);
  void Copy() const;

  String mText;
  std::vector<std::size_t> mStarts;  // of every so many lines, in bytes
  int mLines = 0;
  int mFrom = -1;  // selected lines, in either order; -1: none
  int mTo = -1;
};

}  // namespace zelto
