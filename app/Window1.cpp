#include "ui/Window1.h"

#include "core/Globals.h"
#include "platform/Application.h"
#include "platform/runtime/Numbers.h"
#include "ui/WPerm.h"

namespace zelto {

void Window1::Event_Open() {
  WPerm()->ShowModal();
  if (!Globals::Authenticated) Quit(0);
  Left(RuntimeCvtReal64ToSInt32(RuntimeCvtSInt32ToReal64(Screen(0)->Width() - Width()) / 2.0));
  Top(RuntimeCvtReal64ToSInt32(RuntimeCvtSInt32ToReal64(Screen(0)->Height() - Height()) / 3.0));
  Show();
}

void Window1::Event_Close() { Quit(0); }

}  // namespace zelto
