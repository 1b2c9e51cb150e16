#pragma once

#include "platform/runtime/String.h"

namespace zelto {

// Whether `su` has verified the password before `sudo`. `su` asks root for no password.
enum class PriorCheck : std::uint8_t { None, Su };

// The reason why CredentialCheck failed, as a sentence for the user. `text` is the output and
// `status` the exit status of CredentialCheck. The result never contains the password.
String FailureReason(const String& text, Int32 status, PriorCheck prior, const String& passwd);

}  // namespace zelto
