#include <dlfcn.h>
#include <pwd.h>
#include <unistd.h>

#include "tests/Fixtures.h"

using namespace zelto;

namespace {

int beeps = 0;

class WPermTest : public testing::Test {
 protected:
  void Attempt(const std::string& password) {
    mDialog->authuser()->Text("zt");
    mDialog->passwd()->Text(password);
    Press(mDialog->PushButton1());
  }

  ApplicationFixture mApplication;
  StubPrograms mStubs;
  Ref<class WPerm> mDialog = WPerm();
};

}  // namespace

// Gives each account a full name.
extern "C" passwd* getpwuid(uid_t id) {
  static char name[] = "Full Name,,,";
  static const auto original = reinterpret_cast<passwd* (*)(uid_t)>(dlsym(RTLD_NEXT, "getpwuid"));
  passwd* account = original(id);
  if (account) account->pw_gecos = name;
  return account;
}

// Replaces the toolkit's function and counts the beeps, which make no sound offscreen.
void QApplication::beep() { ++beeps; }

TEST_F(WPermTest, ValidCredentialsOfTheThirdAttemptAreStoredAndCloseTheDialog) {
  beeps = 0;
  Attempt("wrong");
  Attempt("");
  EXPECT_EQ(beeps, 2);
  Attempt("secret");
  EXPECT_TRUE(Globals::Authenticated);
  EXPECT_EQ(Bytes(Globals::User), "zt");
  EXPECT_EQ(Bytes(Globals::Passwd), "secret");
  EXPECT_FALSE(GetImplicitWindow("WPerm.WPerm"));
  EXPECT_EQ(mStubs.Calls("sudo").front(), std::vector<std::string>{"-K"});
}

TEST_F(WPermTest, ValidCredentialsHaveNoEffectAfterThreeFailures) {
  for (int i = 0; i < 3; ++i) Attempt("wrong");
  EXPECT_EQ(Bytes(mDialog->authuser()->Text()), "zt");
  const auto calls = mStubs.Calls("su").size();
  beeps = 0;
  Attempt("secret");
  EXPECT_EQ(beeps, 0);
  EXPECT_EQ(mStubs.Calls("su").size(), calls + 1);    // `su` still runs
  EXPECT_EQ(mStubs.Calls("sudo").size(), calls + 2);  // `sudo -K` each time
  EXPECT_FALSE(Globals::Authenticated);
  EXPECT_TRUE(Globals::User.IsNil() && Globals::Passwd.IsNil());
  EXPECT_TRUE(GetImplicitWindow("WPerm.WPerm") == mDialog);
}

TEST_F(WPermTest, SecondCloseDuringAnAttemptEndsTheProgram) {
  mDialog->Show();
  auto& top = *TopLevel("Authenticate");
  mStubs.Script("su", mStubs.Blocker());
  Once([&] { return !mStubs.Calls("su").empty(); },
       [&] {
         top.close();
         EXPECT_TRUE(top.isVisible());
         top.close();
       });
  Attempt("secret");
  EXPECT_THROW(ThrowIfQuitting(), EndException);
}

TEST_F(WPermTest, BalloonShowsCapsLockAndTheReasonOfAFailure) {
  mDialog->Show();
  EXPECT_EQ(Bytes(mDialog->authuser()->Text()), getpwuid(getuid())->pw_name);
  Until([] { return QApplication::activeWindow(); });
  auto& field = ControlWidget<QLineEdit>(*QApplication::activeWindow(), "passwd");
  EXPECT_TRUE(field.hasFocus());
  const auto balloon = [] {
    QString shown;
    for (auto* top : QApplication::topLevelWidgets()) {
      if (auto* label = qobject_cast<QLabel*>(top); label && label->isVisible())
        shown += label->text();
    }
    return shown.toStdString();
  };
  constexpr quint32 capsLock = 2;
  const auto press = [&](Qt::Key key, quint32 modifiers) {
    QKeyEvent event(QEvent::KeyPress, key, {}, 0, 0, modifiers);
    QApplication::sendEvent(&field, &event);
    return balloon();
  };
  EXPECT_EQ(press(Qt::Key_CapsLock, 0), "Caps Lock is on.");
  EXPECT_EQ(press(Qt::Key_A, capsLock), "Caps Lock is on.");
  EXPECT_EQ(press(Qt::Key_CapsLock, capsLock), "");
  const std::string reason = "The name or the password was not accepted.";
  for (int i = 0; i < 2; ++i) Attempt("wrong");
  EXPECT_EQ(balloon(), reason);
  EXPECT_EQ(field.accessibleDescription().toStdString(), reason);
  EXPECT_TRUE(field.hasFocus() && field.selectedText() == field.text());
  QTest::keyClick(&field, Qt::Key_End);
  EXPECT_EQ(balloon() + field.accessibleDescription().toStdString(), "");
  Attempt("wrong");
  EXPECT_EQ(
      balloon(),
      reason + "\nFurther attempts have no effect. Press Cancel and start the utility again.");
  const std::string last = balloon();
  QTest::keyClick(&field, Qt::Key_End);
  Attempt("wrong");
  press(Qt::Key_A, capsLock);
  EXPECT_EQ(balloon(), last);
}

TEST_F(WPermTest, FailureShakesTheDialogAndRestoresItsPosition) {
  const Int32 left = mDialog->Left();
  mDialog->Timer1()->Mode(0);  // the state one second after the dialog has opened
  Attempt("wrong");
  bool hasMoved = false;
  Until([&] {
    const bool isAway = mDialog->Left() != left;
    hasMoved = hasMoved || isAway;
    return hasMoved && !isAway;
  });
  QTest::qWait(150);  // an endless shake would make three more steps
  EXPECT_EQ(mDialog->Left(), left);
}
