#pragma once

namespace zelto {

// While it exists, a failure of Qt to open a display ends the process with status 1 and one line on
// standard error, without a core dump. The destructor prints all other messages.
class StartMessages {
 public:
  StartMessages();
  StartMessages(const StartMessages&) = delete;
  StartMessages& operator=(const StartMessages&) = delete;
  ~StartMessages();
};

}  // namespace zelto
