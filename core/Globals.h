#pragma once

#include "platform/runtime/String.h"

// State shared by the windows.
namespace zelto::Globals {

// The credentials that `su` and `sudo` have accepted. Nil before that.
extern String User;
extern String Passwd;
extern String thePatchName;  // the path of the last dropped file
extern bool Authenticated;

// The short name or the full name of the user who runs the program. Nil if the account has none.
String GetUserName(bool shortName);

}  // namespace zelto::Globals
