#include <pwd.h>
#include <unistd.h>

#include "core/Globals.h"

namespace zelto::Globals {

String GetUserName(bool shortName) {
  const passwd* account = getpwuid(getuid());
  if (!account) return {};
  if (shortName) return account->pw_name;
  // The full name is the first comma-separated field.
  return account->pw_gecos ? NthField(account->pw_gecos, ",", 1) : String();
}

}  // namespace zelto::Globals
