#include "platform/qt/Accessibility.h"

#include <QAccessible>
#include <QLineEdit>

namespace zelto {

namespace {

void TellMasked(QAccessibleEvent* event);

// A handler is called in place of the toolkit's own way, which it has to be put aside for.
void Tell(QAccessibleEvent* event) {
  QAccessible::installUpdateHandler(nullptr);
  QAccessible::updateAccessibility(event);
  QAccessible::installUpdateHandler(TellMasked);
}

QString Masked(const QString& text) { return {text.size(), QChar(0x2022)}; }

void TellChange(QLineEdit& line, const QAccessibleTextCursorEvent& event, int position,
                const QString& removed, const QString& inserted) {
  QAccessibleTextUpdateEvent masked(&line, position, Masked(removed), Masked(inserted));
  masked.setCursorPosition(event.cursorPosition());
  Tell(&masked);
}

void TellMasked(QAccessibleEvent* event) {
  auto* line = qobject_cast<QLineEdit*>(event->object());
  if (!line || line->echoMode() == QLineEdit::Normal) return Tell(event);
  switch (event->type()) {
    case QAccessible::TextInserted: {
      const auto& change = static_cast<QAccessibleTextInsertEvent&>(*event);
      return TellChange(*line, change, change.changePosition(), {}, change.textInserted());
    }
    case QAccessible::TextRemoved: {
      const auto& change = static_cast<QAccessibleTextRemoveEvent&>(*event);
      return TellChange(*line, change, change.changePosition(), change.textRemoved(), {});
    }
    case QAccessible::TextUpdated: {
      const auto& change = static_cast<QAccessibleTextUpdateEvent&>(*event);
      return TellChange(*line, change, change.changePosition(), change.textRemoved(),
                        change.textInserted());
    }
    default:
      return Tell(event);
  }
}

}  // namespace

void KeepPasswordsFromAssistiveTechnology() { QAccessible::installUpdateHandler(TellMasked); }

}  // namespace zelto
