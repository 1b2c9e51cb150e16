#include "platform/qt/Accessibility.h"

#include <QAccessibleWidget>
#include <QLineEdit>

#include "platform/qt/TopLevel.h"

namespace zelto {

namespace {

void ReportMasked(QAccessibleEvent* event);

// Uninstalls ReportMasked while Qt's own handler gets the event.
void Report(QAccessibleEvent* event) {
  QAccessible::installUpdateHandler(nullptr);
  QAccessible::updateAccessibility(event);
  QAccessible::installUpdateHandler(ReportMasked);
}

QString Masked(const QString& text) { return {text.size(), QChar(0x2022)}; }

void ReportChange(QLineEdit& line, const QAccessibleTextCursorEvent& event, int position,
                  const QString& removed, const QString& inserted) {
  QAccessibleTextUpdateEvent masked(&line, position, Masked(removed), Masked(inserted));
  masked.setCursorPosition(event.cursorPosition());
  Report(&masked);
}

void ReportMasked(QAccessibleEvent* event) {
  auto* line = qobject_cast<QLineEdit*>(event->object());
  if (!line || line->echoMode() == QLineEdit::Normal) return Report(event);
  if (const auto* text = dynamic_cast<QAccessibleTextInsertEvent*>(event)) {
    return ReportChange(*line, *text, text->changePosition(), {}, text->textInserted());
  }
  if (const auto* text = dynamic_cast<QAccessibleTextRemoveEvent*>(event)) {
    return ReportChange(*line, *text, text->changePosition(), text->textRemoved(), {});
  }
  if (const auto* text = dynamic_cast<QAccessibleTextUpdateEvent*>(event)) {
    return ReportChange(*line, *text, text->changePosition(), text->textRemoved(),
                        text->textInserted());
  }
  Report(event);
}

// Qt itself calls a window of no special class a "filler". The type of a window can change after Qt
// has asked for its interface.
class WindowInterface : public QAccessibleWidget {
 public:
  using QAccessibleWidget::QAccessibleWidget;

  QAccessible::Role role() const override {
    return widget()->windowType() == Qt::Dialog ? QAccessible::Dialog : QAccessible::Window;
  }
};

QAccessibleInterface* NewWindowInterface(const QString&, QObject* object) {
  auto* top = dynamic_cast<TopLevel*>(object);
  return top ? new WindowInterface(top) : nullptr;
}

}  // namespace

void SetUpAccessibility() {
  QAccessible::installUpdateHandler(ReportMasked);
  QAccessible::installFactory(NewWindowInterface);
}

void Announce([[maybe_unused]] QWidget& widget, [[maybe_unused]] const QString& text) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
  QAccessibleAnnouncementEvent event(&widget, text);
  QAccessible::updateAccessibility(&event);
#endif
}

}  // namespace zelto
