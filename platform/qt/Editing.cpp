#include "platform/qt/Editing.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QPlainTextEdit>

#include "platform/qt/QtToolkit.h"

namespace zelto {

namespace {

// The state of the field that the commands act on. The default state permits no command.
struct Field {
  bool IsReadOnly = true;
  bool IsSecret = false;
  bool CanUndo = false;
  bool HasSelection = false;
  bool IsAllSelected = true;
};

// An editing command. The field runs it when the field receives the key.
struct Command {
  const char* ItemName;
  QKeySequence::StandardKey Key;
  bool (*IsPossible)(const Field& field);
};

bool ClipboardHasText() {
  const auto* data = QGuiApplication::clipboard()->mimeData();
  return data && data->hasText();
}

constexpr Command commands[] = {
    {"EditUndo", QKeySequence::Undo, [](const Field& field) { return field.CanUndo; }},
    {"EditCut", QKeySequence::Cut,
     [](const Field& field) { return !field.IsReadOnly && !field.IsSecret && field.HasSelection; }},
    {"EditCopy", QKeySequence::Copy,
     [](const Field& field) { return !field.IsSecret && field.HasSelection; }},
    {"EditPaste", QKeySequence::Paste,
     [](const Field& field) { return !field.IsReadOnly && ClipboardHasText(); }},
    {"EditClear", QKeySequence::Delete,
     [](const Field& field) { return !field.IsReadOnly && field.HasSelection; }},
    {"EditSelectAll", QKeySequence::SelectAll,
     [](const Field& field) { return !field.IsAllSelected; }},
};

Field EditedField() {
  QWidget* widget = TheToolkit().EditedField;
  if (const auto* line = qobject_cast<QLineEdit*>(widget)) {
    return {.IsReadOnly = line->isReadOnly(),
            .IsSecret = line->echoMode() != QLineEdit::Normal,
            .CanUndo = line->isUndoAvailable(),
            .HasSelection = line->hasSelectedText(),
            .IsAllSelected = line->selectedText().size() == line->text().size()};
  }
  if (const auto* area = qobject_cast<QPlainTextEdit*>(widget)) {
    const auto selected = area->textCursor().selectedText().size();
    return {.IsReadOnly = area->isReadOnly(),
            .CanUndo = !area->isReadOnly() && area->document()->isUndoAvailable(),
            .HasSelection = selected > 0,
            .IsAllSelected = selected == area->document()->characterCount() - 1};
  }
  return {};
}

template <class Widget>
void Follow(const QWidget& field, QObject& context, const std::function<void()>& changed) {
  const auto* edit = qobject_cast<const Widget*>(&field);
  if (!edit) return;
  QObject::connect(edit, &Widget::selectionChanged, &context, changed);
  QObject::connect(edit, &Widget::textChanged, &context, changed);
}

const Command* Find(const String& itemName) {
  for (const auto& command : commands) {
    if (itemName == command.ItemName) return &command;
  }
  return nullptr;
}

}  // namespace

bool CanEdit(const String& itemName) {
  const Command* command = Find(itemName);
  return command && command->IsPossible(EditedField());
}

void Edit(const String& itemName) {
  if (!CanEdit(itemName)) return;
  const auto key = QKeySequence(Find(itemName)->Key)[0];
  QKeyEvent press(QEvent::KeyPress, key.key(), key.keyboardModifiers());
  QCoreApplication::sendEvent(TheToolkit().EditedField, &press);
}

void FollowEditing(QObject& context, const std::function<void()>& changed) {
  QObject::connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, &context, changed);
  QObject::connect(qApp, &QApplication::focusChanged, &context,
                   [=, &context](QWidget*, QWidget* now) {
                     auto& field = TheToolkit().EditedField;
                     if (!now || now == field || qobject_cast<QMenuBar*>(now)) return;
                     if (field) QObject::disconnect(field, nullptr, &context, nullptr);
                     field = now;
                     Follow<QLineEdit>(*now, context, changed);
                     Follow<QPlainTextEdit>(*now, context, changed);
                     changed();
                   });
}

}  // namespace zelto
