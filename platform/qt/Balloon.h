#pragma once

#include <QLabel>
#include <QPointer>

namespace zelto {

// A text beside a widget, on the screen until the next key. Assistive technology reads it as the
// widget's description.
class Balloon : public QLabel {
 public:
  Balloon(QWidget& anchor, const QString& text);

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  void Place();
  void Dismiss();

  QPointer<QWidget> mAnchor;
};

}  // namespace zelto
