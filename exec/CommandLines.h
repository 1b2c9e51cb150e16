#pragma once

#include <optional>

#include "platform/runtime/String.h"

namespace zelto {

// Where the control member of an update file is extracted to.
inline constexpr const char* ContentRecordPath = "/tmp/.KVX.Content";

// One line for the command interpreter.
struct CommandLine {
  CommandLine(String text, String passphrase = {}, std::optional<std::size_t> outputSize = {})
      : Text(std::move(text)), Passphrase(std::move(passphrase)), OutputSize(outputSize) {}

  String Text;
  // What `sudo` gets when the line makes it ask without a pipe to read from; nil for such a line
  // only.
  String Passphrase;
  // The bytes that the command itself writes to standard output when it succeeds, if that is known.
  // What else the output has, `su` and `sudo` wrote.
  std::optional<std::size_t> OutputSize;
};

// The six lines of the program. A value that an interpreter or a program would read as anything
// but itself is quoted, so that it stays one word with its own meaning; all others stand bare.
CommandLine ForgetCredentials();
CommandLine CredentialCheck(const String& passwd, const String& user);
CommandLine MemberExtract(const String& passwd, const String& user, const String& path);
// The size is that of the extracted member, in bytes.
CommandLine MemberRead(const String& passwd, const String& user, std::size_t size);
CommandLine FullExtract(const String& passwd, const String& user, const String& path);
// The path is not held together here: at a blank it falls into several words.
CommandLine ListingTest(const String& path);

// The value as one word of an interpreter's line.
String Quoted(const String& value);

}  // namespace zelto
