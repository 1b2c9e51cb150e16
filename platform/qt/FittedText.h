#pragma once

#include <QFont>
#include <QHelpEvent>
#include <QToolTip>

#include "platform/qt/Text.h"

namespace zelto {

// A text and its font as a control shows them.
struct FittedText {
  QFont Font;
  QString Text;
};

// The font, reduced until the text fits into the space (pixels). If no readable size fits, the text
// is shortened as well.
FittedText Fit(const QFont& font, const QString& text, QSize space, int textFlags);

// A label or button that shows a fitted text. The tool tip of a shortened text is the whole text.
template <class Base>
class Fitted : public Base {
 public:
  using Base::Base;

 protected:
  virtual FittedText Shown() const = 0;

  bool event(QEvent* event) override {
    if (event->type() != QEvent::ToolTip || Shown().Text == Base::text()) return Base::event(event);
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), ToolTip(Base::text()), this);
    return true;
  }
};

}  // namespace zelto
