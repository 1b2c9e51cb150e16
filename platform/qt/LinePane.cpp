#include <QApplication>
#include <QLineEdit>

#include "platform/qt/CapsLock.h"
#include "platform/qt/EditPane.h"
#include "platform/qt/FittedText.h"
#include "platform/runtime/Secrecy.h"

namespace zelto {

namespace {

// Overwrites the buffer of the text, even if the QLineEdit shares it.
void Overwrite(const QString& text) {
  Wipe(const_cast<QChar*>(text.constData()), static_cast<std::size_t>(text.size()) * sizeof(QChar));
}

class LinePane : public EditPane<QLineEdit> {
 public:
  LinePane(EditField& field, TopLevel& top) : EditPane(field, top) {
    LinePane::Update();
    SetText(Properties().Text);
  }
  ~LinePane() override {
    if (!Properties().Password) return;
    Overwrite(Before());
    Overwrite(LinePane::ShownText());
  }

  void Update() override {
    EditPane::Update();
    const auto& list = Properties();
    constexpr int frame = 6;
    constexpr int toolkitsLimit = 32'767;  // characters
    // The line of text must not be higher than the field.
    mWidget->setFont(Fit(mWidget->font(), "Áy", {list.Width, list.Height - frame}, 0).Font);
    // Some styles clip the text of a low field to what the frame leaves.
    mWidget->setTextMargins(0, -frame, 0, -frame);
    mWidget->setFrame(list.Border);
    mWidget->setEchoMode(list.Password ? QLineEdit::Password : QLineEdit::Normal);
    mWidget->setMaxLength(list.LimitText > 0 ? list.LimitText : toolkitsLimit);
    mWidget->setAlignment(HorizontalAlignment(list.Alignment) | Qt::AlignVCenter);
  }

 protected:
  QString ShownText() const override { return mWidget->text(); }
  void Write(const QString& text) override { mWidget->setText(text); }

  // A pasted text often ends in a newline. Within a value, no command line can carry one.
  bool Accept() override {
    const bool isSecret = Properties().Password;
    if (isSecret) HideMemory();
    QString text = ShownText();
    while (text.endsWith('\n') || text.endsWith('\r')) text.chop(1);
    const bool isPossible = !text.contains('\n') && !text.contains(QChar::Null);
    const bool isChanged = text != ShownText();
    if (isSecret && (isChanged || !isPossible)) Overwrite(ShownText());
    if (!isPossible) return QApplication::beep(), false;
    if (isSecret) Overwrite(Before());
    // QLineEdit keeps typed letters for undo, even in a password field. setText clears that
    // history.
    if (isSecret || isChanged) Replace(text);
    return true;
  }

 private:
  void ShowCapsLock(bool isOn) {
    if (!isOn) delete mCapsLockBalloon;
    if (!isOn || !Properties().Password || (mBalloon && mBalloon->isVisible())) return;
    ShowBalloon("Caps Lock is on.", BalloonEnd::Window);
    mCapsLockBalloon = mBalloon;
  }

  void Replace(const QString& text) {
    const int cursor = mWidget->cursorPosition();
    Show(text);
    mWidget->setCursorPosition(cursor);
  }

  QPointer<Balloon> mCapsLockBalloon;
  CapsLock mCapsLock{*mWidget, [this](bool isOn) { ShowCapsLock(isOn); }};
};

}  // namespace

std::unique_ptr<EditFieldPane> NewPane(EditField& field, WindowImp& window) {
  auto& top = TopLevelOf(window);
  if (field.Properties().Multiline) return NewAreaPane(field, top);
  return std::make_unique<LinePane>(field, top);
}

}  // namespace zelto
