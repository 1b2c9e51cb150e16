#pragma once

#include <optional>

#include "platform/runtime/String.h"

namespace zelto {

// The name of the control member in an update file, and the path to which `tar` extracts it.
inline constexpr const char* ContentRecordPath = "/tmp/.KVX.Content";

struct CommandLine {
  CommandLine(String text, String passphrase = {}, std::optional<std::size_t> outputSize = {})
      : Text(std::move(text)), Passphrase(std::move(passphrase)), OutputSize(outputSize) {}

  String Text;
  // The password that `sh` exports for `sudo`. Nil if none asks for it or a pipe passes it.
  String Passphrase;
  // The number of bytes that the program under `sudo` writes to standard output if it succeeds.
  // Empty if unknown. All other bytes of the output are from `su` and `sudo`.
  std::optional<std::size_t> OutputSize;
};

// The six command lines of the program. Each parameter becomes one word.
CommandLine ForgetCredentials();
CommandLine CredentialCheck(const String& passwd, const String& user);
CommandLine MemberExtract(const String& passwd, const String& user, const String& path);
// `size` is the size of the extracted member in bytes.
CommandLine MemberRead(const String& passwd, const String& user, std::size_t size);
CommandLine FullExtract(const String& passwd, const String& user, const String& path);
// Here a path with blanks becomes several words.
CommandLine ListingTest(const String& path);

// The value as one word of a command line.
String Quoted(const String& value);

}  // namespace zelto
