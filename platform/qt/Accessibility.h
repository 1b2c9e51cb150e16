#pragma once

namespace zelto {

// From here on assistive technology hears of each change of a password, but not the letters. The
// toolkit would tell them as they are typed.
void KeepPasswordsFromAssistiveTechnology();

}  // namespace zelto
