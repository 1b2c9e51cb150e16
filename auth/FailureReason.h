#pragma once

#include "platform/runtime/String.h"

namespace zelto {

// Whether `su` has verified the password before `sudo`, as it does unless root runs the utility.
enum class PriorCheck : std::uint8_t { None, Su };

// The reason why CredentialCheck failed, as a sentence for the user. `text` is the output of the
// shell, and `status` is its last exit status. The result never contains the password.
String FailureReason(const String& text, Int32 status, PriorCheck prior, const String& passwd);

}  // namespace zelto
