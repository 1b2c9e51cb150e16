#include <unistd.h>

#include "auth/FailureReason.h"
#include "core/Globals.h"
#include "exec/Shell.h"
#include "platform/Application.h"
#include "platform/runtime/Numbers.h"
#include "ui/WPerm.h"

namespace zelto {

namespace {

constexpr Int32 allowedAttempts = 3;
constexpr Int32 shakePeriod = 50;  // milliseconds
constexpr Int32 shakeSteps = 7;    // 350 ms in all

String Explanation(Shell& shell, const String& passwd, Int32 failures) {
  const auto prior = getuid() == 0 ? PriorCheck::None : PriorCheck::Su;
  auto reason = FailureReason(shell.ReadAll(), shell.ErrorCode(), prior, passwd);
  if (failures < allowedAttempts) return reason;
  return reason + EndOfLine() +
         "Further attempts have no effect. Press Cancel and start the utility again.";
}

}  // namespace

void WPerm::Event_Open() {
  Top(RuntimeCvtReal64ToSInt32(RuntimeCvtSInt32ToReal64(Screen(0)->Height() - Height()) / 3.0 +
                               22.0));
  Left(RuntimeCvtReal64ToSInt32(RuntimeCvtSInt32ToReal64(Screen(0)->Width() - Width()) / 2.0));
  Counter = 0;
  if (authuser()->Text().IsNil()) authuser()->Text(Globals::GetUserName(true));
  passwd()->SetFocus();
}

void WPerm::PushButton1_Action() {
  const auto shell = New<Shell>();
  Globals::Authenticated = false;
  shell->Mode(0);
  shell->Execute(ForgetCredentials());
  shell->Execute(CredentialCheck(passwd()->Text(), authuser()->Text()));
  if (Counter >= allowedAttempts) return;
  if (shell->ErrorCode() != 0) {
    ++Counter;
    Beep();
    StartShake();
    passwd()->SelectAll();
    passwd()->SetFocus();
    passwd()->ShowBalloon(Explanation(*shell, passwd()->Text(), Counter),
                          Counter < allowedAttempts ? BalloonEnd::NextKey : BalloonEnd::Window);
    return;
  }
  Globals::Authenticated = true;
  Counter = allowedAttempts;
  Globals::User = authuser()->Text();
  Globals::Passwd = passwd()->Text();
  zelto::WPerm()->Close();
}

void WPerm::PushButton2_Action() {
  Globals::Authenticated = false;
  zelto::WPerm()->Close();
}

void WPerm::Timer1::Fire() { RuntimeCheckCast<class WPerm>(Window())->Shake(); }

void WPerm::StartShake() {
  const bool isAtRest = wiggle == 0 || wiggle >= shakeSteps;
  if (isAtRest) origx = Left();
  wiggle = 0;
  Timer1()->Period(shakePeriod);
  Timer1()->Mode(2);
}

void WPerm::Shake() {
  constexpr Int32 swing = 8;  // pixels
  const bool isOver = Counter == 0 || wiggle >= shakeSteps;
  if (isOver) return Timer1()->Mode(0);
  ++wiggle;
  const Int32 side = wiggle % 2 == 0 ? -swing : swing;
  Left(wiggle == shakeSteps ? origx : origx + side);
}

}  // namespace zelto
