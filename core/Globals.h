#pragma once

#include "platform/runtime/String.h"

// What outlives a window.
namespace zelto::Globals {

// The pair that `su` and `sudo` accepted; nil before.
extern String User;
extern String Passwd;
extern String thePatchName;  // the path of the last dropped file
extern bool Authenticated;

}  // namespace zelto::Globals
