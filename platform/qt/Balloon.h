#pragma once

#include <QLabel>
#include <QPointer>

#include "platform/Toolkit.h"

namespace zelto {

// A text next to a widget, also the widget's accessible description.
class Balloon : public QLabel {
 public:
  Balloon(QWidget& anchor, const QString& text, BalloonEnd end);
  ~Balloon() override;

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  void Place();
  void Dismiss();

  QPointer<QWidget> mAnchor;  // null after Dismiss
  BalloonEnd mEnd;
};

}  // namespace zelto
