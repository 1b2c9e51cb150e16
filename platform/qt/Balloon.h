#pragma once

#include <QLabel>
#include <QPointer>

namespace zelto {

// A text next to a widget until the next key press, also the widget's accessible description.
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
