#pragma once

namespace zelto {

// While it exists, a failure of the toolkit to open a display ends the process with status 1 and
// one line on standard error, in place of a core dump. Other messages appear at its end.
class StartMessages {
 public:
  StartMessages();
  StartMessages(const StartMessages&) = delete;
  StartMessages& operator=(const StartMessages&) = delete;
  ~StartMessages();
};

}  // namespace zelto
