#include "platform/qt/Editing.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QPlainTextEdit>
#include <functional>

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

// An editing command. It does not send its key to the field, because a read-only area passes the
// key on, and the key starts the command again.
struct Command {
  const char* ItemName;
  void (*Run)(QWidget& field);
  bool (*IsPossible)(const Field& field);
};

template <auto RunInLine, auto RunInArea>
void Run(QWidget& field) {
  if (auto* line = qobject_cast<QLineEdit*>(&field)) std::invoke(RunInLine, *line);
  if (auto* area = qobject_cast<QPlainTextEdit*>(&field)) std::invoke(RunInArea, *area);
}

void DeleteSelection(QPlainTextEdit& area) { area.textCursor().removeSelectedText(); }

bool ClipboardHasText() {
  const auto* data = QGuiApplication::clipboard()->mimeData();
  return data && data->hasText();
}

constexpr Command commands[] = {
    {"EditUndo", Run<&QLineEdit::undo, &QPlainTextEdit::undo>,
     [](const Field& field) { return field.CanUndo; }},
    {"EditCut", Run<&QLineEdit::cut, &QPlainTextEdit::cut>,
     [](const Field& field) { return !field.IsReadOnly && !field.IsSecret && field.HasSelection; }},
    {"EditCopy", Run<&QLineEdit::copy, &QPlainTextEdit::copy>,
     [](const Field& field) { return !field.IsSecret && field.HasSelection; }},
    {"EditPaste", Run<&QLineEdit::paste, &QPlainTextEdit::paste>,
     [](const Field& field) { return !field.IsReadOnly && ClipboardHasText(); }},
    {"EditClear", Run<&QLineEdit::del, DeleteSelection>,
     [](const Field& field) { return !field.IsReadOnly && field.HasSelection; }},
    {"EditSelectAll", Run<&QLineEdit::selectAll, &QPlainTextEdit::selectAll>,
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
  if (CanEdit(itemName)) Find(itemName)->Run(*TheToolkit().EditedField);
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
