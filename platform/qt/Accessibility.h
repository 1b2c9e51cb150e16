#pragma once

namespace zelto {

// Masks the characters in the change notifications of password fields. By default, Qt reports the
// typed characters to assistive technology.
void KeepPasswordsFromAssistiveTechnology();

}  // namespace zelto
