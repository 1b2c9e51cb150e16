#pragma once

#include "platform/runtime/String.h"

namespace zelto::Globals {

// The short or the full name of the account that runs the program. Nil if it has none.
String GetUserName(bool shortName);

}  // namespace zelto::Globals
