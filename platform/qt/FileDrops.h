#pragma once

#include <QRubberBand>

#include "platform/Control.h"

namespace zelto {

// Makes the widget of a field accept drops of files of the added types and nothing else. Marks the
// widget while such a file is over it.
class FileDrops : public QObject {
 public:
  FileDrops(EditField& field, QWidget& widget);

  void Add(const String& type) { mFilter = mFilter + ";" + type; }

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  void Deliver(const String& path);

  EditField& mField;
  QRubberBand* mMark;
  String mFilter;
};

}  // namespace zelto
