#pragma once

#include "platform/runtime/String.h"

namespace zelto {

// Who verified the password before `sudo` did: nobody when root starts the utility.
enum class PriorCheck : std::uint8_t { None, Su };

// Why CredentialCheck failed, as a sentence for the person, from the text and the exit status that
// it left. It never contains the password.
String FailureReason(const String& text, Int32 status, PriorCheck prior, const String& passwd);

}  // namespace zelto
