#include "core/Globals.h"

namespace zelto::Globals {

String User;
String Passwd;
String thePatchName;
bool Authenticated = false;

}  // namespace zelto::Globals
