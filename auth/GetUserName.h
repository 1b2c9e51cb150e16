#pragma once

#include "platform/runtime/String.h"

namespace zelto::Globals {

// The account's short or full name of the user who runs the program; nil when it has none.
String GetUserName(bool shortName);

}  // namespace zelto::Globals
