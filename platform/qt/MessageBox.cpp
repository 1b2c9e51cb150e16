#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/Application.h"
#include "platform/MessageDialog.h"
#include "platform/qt/Notification.h"
#include "platform/qt/QtToolkit.h"
#include "platform/qt/Text.h"
#include "platform/qt/TopLevel.h"

namespace zelto {

namespace {

constexpr int textWidth = 440;  // pixels

// QLabel lays out its whole text and does not break words. Long texts use a widget that lays out
// only the visible part.
bool IsLong(const QString& text, const QFontMetrics& font) {
  constexpr int longest = 1500;
  constexpr int mostLines = 15;
  if (text.size() > longest || text.count('\n') > mostLines) return true;
  const QStringList words = text.simplified().split(' ');
  return std::ranges::any_of(
      words, [&](const QString& word) { return font.horizontalAdvance(word) > textWidth; });
}

// The position of the first whole UTF-8 character from this one on.
std::size_t CharacterFrom(std::string_view text, std::size_t at) {
  while (at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U) ++at;
  return at;
}

// Leaves out the middle of a text that would take the widget seconds and most of the memory.
String Abridged(const String& text) {
  constexpr std::size_t part = 8'000'000;  // bytes
  const auto bytes = text.Bytes();
  if (bytes.size() <= 2 * part) return text;
  const auto begin = CharacterFrom(bytes, part);
  const auto end = CharacterFrom(bytes, bytes.size() - part);
  return bytes.substr(0, begin) + ("\n[" + std::to_string(end - begin)) +
         " bytes are not shown here]\n" + bytes.substr(end);
}

class MessageBoxDialog : public QDialog {
 public:
  explicit MessageBoxDialog(MessageDialog& dialog) : mDialog(dialog) {
    setWindowTitle(dialog.Title().IsNil() ? "ZELTO Group Update Utility"
                                          : ToDisplayText(dialog.Title()));
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                   Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(12);
    auto* head = new QHBoxLayout;
    layout->addLayout(head);
    AddIcon(*head);
    auto* texts = new QVBoxLayout;
    head->addLayout(texts, 1);
    texts->setSpacing(12);
    texts->addWidget(MainLine());
    texts->addWidget(ExplanationWidget());
    layout->addWidget(Buttons());
    qApp->installEventFilter(this);
  }

  void showEvent(QShowEvent* event) override {
    QDialog::showEvent(event);
    QTimer::singleShot(0, this, [this] { Shown(); });
  }

  Ref<MessageDialogButton> Pressed() const {
    if (mPressed) return mPressed;
    const Ref<MessageDialogButton> others[] = {mDialog.CancelButton(),
                                               mDialog.AlternateActionButton()};
    for (const auto& button : others) {
      if (button->Visible() && button->Cancel()) return button;
    }
    return mDialog.ActionButton();
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    return IsAnyOf(*event, QEvent::KeyPress, QEvent::KeyRelease, QEvent::Shortcut,
                   QEvent::ShortcutOverride, QEvent::InputMethod);
  }

 private:
  // A window can demand attention only after it is shown.
  void Shown() {
    QApplication::alert(this);
    constexpr int hold = 500;  // milliseconds
    QTimer::singleShot(hold, this, [this] {
      qApp->removeEventFilter(this);
      if (!isActiveWindow()) mNotification.emplace(*this, ToDisplayText(mDialog.Message()));
    });
  }

  void AddIcon(QHBoxLayout& head) {
    const QIcon icon = IconOf(mDialog.Icon());
    if (icon.isNull()) return;
    auto* label = new QLabel(this);
    label->setPixmap(icon.pixmap(style()->pixelMetric(QStyle::PM_MessageBoxIconSize)));
    head.addWidget(label, 0, Qt::AlignTop);
    head.setSpacing(16);
  }

  QIcon IconOf(Int32 code) const {
    constexpr QStyle::StandardPixmap icons[] = {
        QStyle::SP_MessageBoxInformation, QStyle::SP_MessageBoxWarning,
        QStyle::SP_MessageBoxCritical, QStyle::SP_MessageBoxQuestion};
    if (code == 0) return windowIcon();
    return code >= 1 && code <= 4 ? style()->standardIcon(icons[code - 1]) : QIcon();
  }

  QLabel* NewLabel(const QString& text) {
    auto* label = new QLabel(text, this);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMinimumWidth(textWidth);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return label;
  }

  QWidget* MainLine() {
    auto* label = NewLabel(ToDisplayText(mDialog.Message()));
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    return label;
  }

  QWidget* ExplanationWidget() {
    const QString text = ToDisplayText(Abridged(mDialog.Explanation()));
    if (!IsLong(text, fontMetrics())) {
      layout()->setSizeConstraint(QLayout::SetFixedSize);
      return NewLabel(text);
    }
    constexpr int longestWrapped = 50'000;  // wrapping a line of 400,000 letters takes 14 s
    auto* area = new QPlainTextEdit(this);
    area->setAccessibleName("Explanation");
    area->setReadOnly(true);
    area->setTabChangesFocus(true);
    area->setUndoRedoEnabled(false);
    if (text.size() > longestWrapped) area->setLineWrapMode(QPlainTextEdit::NoWrap);
    area->setPlainText(text);
    area->moveCursor(QTextCursor::End);  // the last line shows the error
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
    QPushButton* widget = box.addButton(ToDisplayText(button->Caption()), role);
    widget->setDefault(button->Default());
    if (button->Default()) widget->setFocus();
    connect(widget, &QPushButton::clicked, this, [this, button] {
      mPressed = button;
      accept();
    });
  }

  MessageDialog& mDialog;
  Ref<MessageDialogButton> mPressed;
  std::optional<Notification> mNotification;  // if the user may not see the dialog
};

}  // namespace

Ref<MessageDialogButton> ShowMessageDialog(MessageDialog& dialog, WindowImp* parent) {
  SetPhase(Phase::InDialog);
  MessageBoxDialog box(dialog);
  if (parent) {
    box.setWindowModality(Qt::WindowModal);
    AttachTo(box, *parent);
  }
  box.exec();
  return box.Pressed();
}

}  // namespace zelto
