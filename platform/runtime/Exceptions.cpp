#include "platform/runtime/Exceptions.h"

#if __has_include(<execinfo.h>)
#include <execinfo.h>
#define ZELTO_BACKTRACE 1
#endif

#include <cstdlib>
#include <memory>

namespace zelto {

RuntimeException::RuntimeException(const char* className, String message)
    : mClassName(className), mMessage(std::move(message)) {
#ifdef ZELTO_BACKTRACE
  mDepth = backtrace(mCalls.data(), static_cast<int>(mCalls.size()));
#endif
}

std::vector<String> RuntimeException::Stack() const {
  std::vector<String> stack;
#ifdef ZELTO_BACKTRACE
  const std::unique_ptr<char*, decltype(&std::free)> names(backtrace_symbols(mCalls.data(), mDepth),
                                                           &std::free);
  if (names) stack.assign(names.get(), names.get() + mDepth);
#endif
  return stack;
}

}  // namespace zelto
