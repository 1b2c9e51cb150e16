#pragma once

#include "platform/runtime/String.h"

namespace zelto {

// The name of the control member in an update file, and the path of the record.
inline constexpr const char* ContentRecordPath = "/tmp/.KVX.Content";

// How a command line reaches `sudo`.
enum class Privilege : std::uint8_t {
  None,   // without `su` and password
  Check,  // a pipe passes the password; success requires the mark of the wrapper
  Root,   // `sh` exports the password, and the wrapper passes it
};

struct CommandLine {
  String Text;
  String Password = {};
  String User = {};
  Privilege Needs = Privilege::None;
};

// The six command lines of the program. Each parameter becomes one word.
CommandLine ForgetCredentials();
CommandLine CredentialCheck(const String& passwd, const String& user);
CommandLine MemberExtract(const String& passwd, const String& user, const String& path);
CommandLine MemberRead(const String& passwd, const String& user);
CommandLine FullExtract(const String& passwd, const String& user, const String& path);
// Here a path with blanks becomes several words.
CommandLine ListingTest(const String& path);

// The value as one word of a command line.
String Quoted(const String& value);

}  // namespace zelto
