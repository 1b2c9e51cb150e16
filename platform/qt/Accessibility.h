#pragma once

namespace zelto {

// From here on assistive technology is notified of each change of a password, but not of the
// characters, which Qt would report as they are typed.
void KeepPasswordsFromAssistiveTechnology();

}  // namespace zelto
