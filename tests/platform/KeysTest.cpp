#include "tests/Fixtures.h"

using namespace zelto;

namespace {

constexpr std::pair<const char*, QKeySequence::StandardKey> commands[] = {
    {"Select &All", QKeySequence::SelectAll},
    {"&Copy", QKeySequence::Copy},
    {"Cu&t", QKeySequence::Cut},
    {"&Undo", QKeySequence::Undo},
    {"Select &All", QKeySequence::SelectAll},
    {"&Delete", QKeySequence::Delete},
    {"&Paste", QKeySequence::Paste}};

class KeysTest : public WindowTest<> {
 protected:
  // Runs all commands by key or by menu item. Returns the texts of the field and of the clipboard
  // after each command.
  std::string Edit(QWidget& field, bool byKey) {
    QApplication::clipboard()->setText("old");
    field.activateWindow();
    field.setFocus();
    Until([&] { return field.hasFocus(); });
    QMetaObject::invokeMethod(&field, "selectAll");
    if (!field.property("readOnly").toBool()) QTest::keyClicks(&field, "abc");
    const char* text = field.inherits("QLineEdit") ? "text" : "plainText";
    QString states;
    for (const auto& [item, key] : commands) {
      byKey ? QTest::keySequence(&field, key) : Item(item)->trigger();
      states += field.property(text).toString() + "/" + QApplication::clipboard()->text() + " ";
    }
    return states.toStdString();
  }
};

// Sends the keys to the focused widget, like keys that are held down.
void Repeat(QWidget& window, const std::vector<Qt::Key>& keys, bool isMarked = true) {
  for (const auto key : keys) {
    for (const auto type : {QEvent::KeyRelease, QEvent::KeyPress}) {
      QKeyEvent event(type, key, {}, key == Qt::Key_A ? "a" : "", isMarked);
      event.setTimestamp(1000);
      QApplication::sendEvent(window.focusWidget(), &event);
    }
  }
}

// A new dialog ignores the keyboard for a moment.
void TabTo(QWidget& box, const QWidget& target) {
  Until([&] { return target.hasFocus() || (Repeat(box, {Qt::Key_Tab}), false); });
}

}  // namespace

TEST_F(KeysTest, EveryEditingCommandActsOnEveryKindOfField) {
  const std::string editable = "abc/old abc/abc /abc abc/abc abc/abc /abc abc/abc ";
  const std::string readOnly = "abc/old abc/abc abc/abc abc/abc abc/abc abc/abc abc/abc ";
  auto& area = ControlWidget(*mTop, "EditField2");
  mWindow->EditField2()->Text("abc");
  const auto dialog = mWindow->New<MessageDialog>();
  dialog->Explanation("abc" + std::string(100, '\n'));
  for (const bool byKey : {true, false}) {
    EXPECT_EQ(Edit(*mLine, byKey), editable);
    EXPECT_EQ(Edit(area, byKey), readOnly);
    WhenModal([&](QWidget& box) {
      auto& explanation = *box.findChild<QPlainTextEdit*>();
      TabTo(box, explanation);
      explanation.setPlainText("abc");
      EXPECT_EQ(Edit(explanation, byKey), readOnly);
      box.close();
    });
    dialog->ShowModalWithin(mWindow);
  }
  mWindow->EditField2()->Set(&EditFieldList::ReadOnly, false);
  EXPECT_EQ(Edit(area, true), editable);
  EXPECT_EQ(Edit(area, false), editable);
  mWindow->EditField1()->Set(&EditFieldList::Password, true);
  EXPECT_EQ(Edit(*mLine, true), "abc/old abc/old /old /old /old /old old/old ");
  EXPECT_EQ(Edit(*mLine, false), "abc/old abc/old abc/old abc/old abc/old /old old/old ");
}

TEST_F(KeysTest, RepeatedKeysTypeAndMoveButPressNoButton) {
  const std::vector pressing{Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_Escape};
  const auto dialog = mWindow->New<MessageDialog>();
  dialog->CancelButton()->Visible(true);
  WhenModal([&](QWidget& box) {
    for (auto* button : box.findChildren<QAbstractButton*>()) {
      TabTo(box, *button);
      Repeat(box, pressing);
    }
    EXPECT_TRUE(box.isVisible());
    QTest::keyClick(&box, Qt::Key_Escape);
  });
  EXPECT_TRUE(dialog->ShowModalWithin(mWindow) == dialog->CancelButton());

  bool isPressed = false;
  for (auto* button : mTop->findChildren<QAbstractButton*>()) {
    button->setEnabled(true);
    QObject::connect(button, &QAbstractButton::clicked, button, [&] { isPressed = true; });
    button->setFocus();
    Repeat(*mTop, pressing);
    Repeat(*mTop, pressing, false);
  }
  mLine->setFocus();
  Repeat(*mTop, {Qt::Key_A, Qt::Key_A, Qt::Key_Left, Qt::Key_Return});
  EXPECT_EQ(mLine->text(), "aa");
  EXPECT_EQ(mLine->cursorPosition(), 1);
  EXPECT_FALSE(isPressed);
  mWindow->EditField2()->Set(&EditFieldList::ReadOnly, false);
  ControlWidget(*mTop, "EditField2").setFocus();
  Repeat(*mTop, {Qt::Key_Return});
  EXPECT_EQ(Bytes(mWindow->EditField2()->Text()), "\n");
  WPerm()->Show();
  Repeat(*TopLevel("Authenticate"), pressing);
  EXPECT_TRUE(GetImplicitWindow("WPerm.WPerm"));
}
