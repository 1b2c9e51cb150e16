#include "platform/runtime/Exceptions.h"

#include <execinfo.h>

#include <cstdlib>
#include <memory>

namespace zelto {

RuntimeException::RuntimeException(const char* className, String message)
    : mClassName(className),
      mMessage(std::move(message)),
      mDepth(backtrace(mCalls.data(), static_cast<int>(mCalls.size()))) {}

std::vector<String> RuntimeException::Stack() const {
  const std::unique_ptr<char*, decltype(&std::free)> names(
      reinterpret_cast<char**>(backtrace_symbols(mCalls.data(), mDepth)), &std::free);
  return names ? std::vector<String>(names.get(), names.get() + mDepth) : std::vector<String>();
}

}  // namespace zelto
