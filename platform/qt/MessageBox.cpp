#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

#include "platform/Application.h"
#include "platform/MessageDialog.h"
#include "platform/qt/Text.h"
#include "platform/qt/Widgets.h"

namespace zelto {

namespace {

constexpr int textWidth = 440;  // pixels

// A label lays its whole text out at once, so a long one goes where only the visible part is.
bool IsLong(const QString& text) { return text.size() > 1500 || text.count('\n') > 15; }

class Box : public QDialog {
 public:
  explicit Box(MessageDialog& dialog) : mDialog(dialog) {
    setWindowTitle(dialog.Title().IsNil() ? "ZELTO Group Update Utility" : Shown(dialog.Title()));
    setAccessibleDescription(Shown(dialog.Message()));
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(12);
    layout->addWidget(MainLine());
    layout->addWidget(ExplanationWidget());
    layout->addWidget(Buttons());
  }

  // A window can ask for attention only once it is on the screen.
  void showEvent(QShowEvent* event) override {
    QDialog::showEvent(event);
    QTimer::singleShot(0, this, [this] { QApplication::alert(this); });
  }

  Ref<MessageDialogButton> Pressed() const {
    if (mPressed) return mPressed;
    if (mDialog.CancelButton()->Visible()) return mDialog.CancelButton();
    return mDialog.ActionButton();
  }

 private:
  QLabel* NewLabel(const String& text) {
    auto* label = new QLabel(Shown(text), this);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMinimumWidth(textWidth);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return label;
  }

  QWidget* MainLine() {
    auto* label = NewLabel(mDialog.Message());
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    return label;
  }

  QWidget* ExplanationWidget() {
    const QString text = Shown(mDialog.Explanation());
    if (!IsLong(text)) return NewLabel(mDialog.Explanation());
    auto* area = new QPlainTextEdit(this);
    area->setReadOnly(true);
    area->setTabChangesFocus(true);
    area->setAccessibleName("Explanation");
    area->setPlainText(text);
    area->moveCursor(QTextCursor::End);  // what went wrong stands last
    area->setMinimumSize(QSize(textWidth + 160, 300).boundedTo(screen()->availableSize() / 2));
    return area;
  }

  QWidget* Buttons() {
    auto* box = new QDialogButtonBox(this);
    AddButton(*box, mDialog.ActionButton(), QDialogButtonBox::AcceptRole);
    AddButton(*box, mDialog.CancelButton(), QDialogButtonBox::RejectRole);
    AddButton(*box, mDialog.AlternateActionButton(), QDialogButtonBox::ActionRole);
    return box;
  }

  void AddButton(QDialogButtonBox& box, const Ref<MessageDialogButton>& button,
                 QDialogButtonBox::ButtonRole role) {
    if (!button->Visible()) return;
    QPushButton* widget = box.addButton(Shown(button->Caption()), role);
    widget->setAutoDefault(false);
    widget->setDefault(button->Default());
    if (button->Default()) widget->setFocus();
    connect(widget, &QPushButton::clicked, this, [this, button] {
      mPressed = button;
      accept();
    });
  }

  MessageDialog& mDialog;
  Ref<MessageDialogButton> mPressed;
};

}  // namespace

Ref<MessageDialogButton> ShowMessageDialog(MessageDialog& dialog, WindowImp* parent) {
  EndWaiting();
  Box box(dialog);
  if (parent) {
    box.setWindowModality(Qt::WindowModal);
    AttachTo(box, *parent);
  }
  box.exec();
  return box.Pressed();
}

}  // namespace zelto
