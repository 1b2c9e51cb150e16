#include "platform/qt/Editing.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QPlainTextEdit>

#include "platform/qt/Toolkit.h"

namespace zelto {

namespace {

struct Command {
  const char* ItemName;
  bool (*CanEditLine)(const QLineEdit&);
  bool (*CanEditArea)(QPlainTextEdit&);
  void (*EditLine)(QLineEdit&);
  void (*EditArea)(QPlainTextEdit&);
};

bool ClipboardHasText() {
  const auto* data = QGuiApplication::clipboard()->mimeData();
  return data && data->hasText();
}

bool IsOpen(const QLineEdit& line) { return line.echoMode() == QLineEdit::Normal; }

bool HasSelection(const QPlainTextEdit& area) { return area.textCursor().hasSelection(); }

constexpr Command commands[] = {
    {"EditUndo", [](const QLineEdit& line) { return line.isUndoAvailable(); },
     [](QPlainTextEdit& area) { return !area.isReadOnly() && area.document()->isUndoAvailable(); },
     [](QLineEdit& line) { line.undo(); }, [](QPlainTextEdit& area) { area.undo(); }},
    {"EditCut",
     [](const QLineEdit& line) {
       return IsOpen(line) && !line.isReadOnly() && line.hasSelectedText();
     },
     [](QPlainTextEdit& area) { return !area.isReadOnly() && HasSelection(area); },
     [](QLineEdit& line) { line.cut(); }, [](QPlainTextEdit& area) { area.cut(); }},
    {"EditCopy", [](const QLineEdit& line) { return IsOpen(line) && line.hasSelectedText(); },
     [](QPlainTextEdit& area) { return HasSelection(area); }, [](QLineEdit& line) { line.copy(); },
     [](QPlainTextEdit& area) { area.copy(); }},
    {"EditPaste", [](const QLineEdit& line) { return !line.isReadOnly() && ClipboardHasText(); },
     [](QPlainTextEdit& area) { return !area.isReadOnly() && ClipboardHasText(); },
     [](QLineEdit& line) { line.paste(); }, [](QPlainTextEdit& area) { area.paste(); }},
    {"EditClear",
     [](const QLineEdit& line) { return !line.isReadOnly() && line.hasSelectedText(); },
     [](QPlainTextEdit& area) { return !area.isReadOnly() && HasSelection(area); },
     [](QLineEdit& line) { line.del(); },
     [](QPlainTextEdit& area) { area.textCursor().removeSelectedText(); }},
    {"EditSelectAll",
     [](const QLineEdit& line) { return line.selectedText().size() < line.text().size(); },
     [](QPlainTextEdit& area) {
       return area.textCursor().selectedText().size() < area.document()->characterCount() - 1;
     },
     [](QLineEdit& line) { line.selectAll(); }, [](QPlainTextEdit& area) { area.selectAll(); }},
};

void Follow(QWidget& field, QObject& context, const std::function<void()>& changed) {
  if (const auto* line = qobject_cast<QLineEdit*>(&field)) {
    QObject::connect(line, &QLineEdit::selectionChanged, &context, changed);
    QObject::connect(line, &QLineEdit::textChanged, &context, changed);
  }
  if (const auto* area = qobject_cast<QPlainTextEdit*>(&field)) {
    QObject::connect(area, &QPlainTextEdit::selectionChanged, &context, changed);
    QObject::connect(area, &QPlainTextEdit::textChanged, &context, changed);
  }
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
  if (!command) return false;
  if (const auto* line = qobject_cast<QLineEdit*>(TheToolkit().EditedField))
    return command->CanEditLine(*line);
  if (auto* area = qobject_cast<QPlainTextEdit*>(TheToolkit().EditedField))
    return command->CanEditArea(*area);
  return false;
}

void Edit(const String& itemName) {
  if (!CanEdit(itemName)) return;
  const Command* command = Find(itemName);
  if (auto* line = qobject_cast<QLineEdit*>(TheToolkit().EditedField)) command->EditLine(*line);
  if (auto* area = qobject_cast<QPlainTextEdit*>(TheToolkit().EditedField))
    command->EditArea(*area);
}

void FollowEditing(QObject& context, const std::function<void()>& changed) {
  QObject::connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, &context, changed);
  QObject::connect(qApp, &QApplication::focusChanged, &context,
                   [=, &context](QWidget*, QWidget* now) {
                     auto& field = TheToolkit().EditedField;
                     if (!now || now == field || qobject_cast<QMenuBar*>(now)) return;
                     if (field) QObject::disconnect(field, nullptr, &context, nullptr);
                     field = now;
                     Follow(*now, context, changed);
                     changed();
                   });
}

}  // namespace zelto
