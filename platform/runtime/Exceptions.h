#pragma once

#include <array>
#include <vector>

#include "platform/runtime/String.h"

namespace zelto {

// The base class of the program's exceptions. Only Application::CallFunctionWithExceptionHandling
// and Main catch them.
class RuntimeException {
 public:
  explicit RuntimeException(const char* className, String message = {});
  virtual ~RuntimeException() = default;

  const char* ClassName() const { return mClassName; }
  const String& Message() const { return mMessage; }
  void Message(const String& message) { mMessage = message; }
  Int32 ErrorNumber() const { return mErrorNumber; }
  void ErrorNumber(Int32 number) { mErrorNumber = number; }
  // The call stack of the throw, innermost call first.
  virtual std::vector<String> Stack() const;

 private:
  const char* mClassName;
  String mMessage;
  Int32 mErrorNumber = 0;
  std::array<void*, 32> mCalls{};
  int mDepth = 0;
};

#define ZELTO_EXCEPTION(name)                                                           \
  struct name : RuntimeException {                                                      \
    explicit name(String message = {}) : RuntimeException(#name, std::move(message)) {} \
  };

// Unwinds the running event handlers. Quit and ThrowIfQuitting throw it.
ZELTO_EXCEPTION(EndException)
ZELTO_EXCEPTION(FunctionNotFoundException)
ZELTO_EXCEPTION(TypeMismatchException)
ZELTO_EXCEPTION(KeyNotFoundException)
ZELTO_EXCEPTION(OutOfBoundsException)
ZELTO_EXCEPTION(OutOfMemoryException)
ZELTO_EXCEPTION(ServiceNotAvailableException)
ZELTO_EXCEPTION(StackOverflowException)
ZELTO_EXCEPTION(UnsupportedFormatException)
ZELTO_EXCEPTION(ThreadEndException)
ZELTO_EXCEPTION(ThreadAlreadyRunningException)
ZELTO_EXCEPTION(NilObjectException)
ZELTO_EXCEPTION(IllegalCastException)
ZELTO_EXCEPTION(InvalidParentException)
ZELTO_EXCEPTION(ShellNotRunningException)
ZELTO_EXCEPTION(ShellNotAvailableException)

#undef ZELTO_EXCEPTION

}  // namespace zelto
