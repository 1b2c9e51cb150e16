#pragma once

#include "platform/runtime/String.h"

namespace zelto {

// What the program raises. Nothing in it catches: Application::CallFunctionWithExceptionHandling
// and Main do.
class RuntimeException {
 public:
  explicit RuntimeException(const char* className, String message = {})
      : mClassName(className), mMessage(std::move(message)) {}
  RuntimeException(const RuntimeException&) = default;
  RuntimeException& operator=(const RuntimeException&) = delete;
  virtual ~RuntimeException() = default;

  const char* ClassName() const { return mClassName; }
  const String& Message() const { return mMessage; }

 private:
  const char* mClassName;
  String mMessage;
};

// Unwinds the handler that asked the application to end.
struct EndException : RuntimeException {
  EndException() : RuntimeException("EndException") {}
};

struct ThreadEndException : RuntimeException {
  ThreadEndException() : RuntimeException("ThreadEndException") {}
};

struct NilObjectException : RuntimeException {
  NilObjectException() : RuntimeException("NilObjectException") {}
};

struct IllegalCastException : RuntimeException {
  IllegalCastException() : RuntimeException("IllegalCastException") {}
};

struct FunctionNotFoundException : RuntimeException {
  explicit FunctionNotFoundException(String message)
      : RuntimeException("FunctionNotFoundException", std::move(message)) {}
};

struct KeyNotFoundException : RuntimeException {
  explicit KeyNotFoundException(String message)
      : RuntimeException("KeyNotFoundException", std::move(message)) {}
};

struct TypeMismatchException : RuntimeException {
  explicit TypeMismatchException(String message)
      : RuntimeException("TypeMismatchException", std::move(message)) {}
};

struct UnsupportedFormatException : RuntimeException {
  explicit UnsupportedFormatException(String message)
      : RuntimeException("UnsupportedFormatException", std::move(message)) {}
};

}  // namespace zelto
