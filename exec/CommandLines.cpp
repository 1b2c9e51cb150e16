#include "exec/CommandLines.h"

#include <algorithm>

namespace zelto {

namespace {

bool Contains(std::string_view text, char c) { return text.find(c) != std::string_view::npos; }

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

// True for a character without a special meaning in a shell word. Some shells expand a word that
// starts with "=".
bool IsOrdinary(char c) {
  const auto isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
  const auto isAscii = (static_cast<unsigned char>(c) & 0x80U) == 0;
  return isLetter || (c >= '0' && c <= '9') || !isAscii || Contains("_./:,@%+-=", c);
}

bool IsOrdinary(const String& value) {
  const auto bytes = value.Bytes();
  return !bytes.empty() && bytes.front() != '=' &&
         std::all_of(bytes.begin(), bytes.end(), [](char c) { return IsOrdinary(c); });
}

bool StartsWithDash(const String& value) { return value.Bytes().starts_with('-'); }

// The text between two quotes, with `escape` in front of each special character.
String Enclosed(const String& text, char quote, std::string_view special, const char* escape) {
  std::string enclosed(1, quote);
  enclosed.reserve(4 * text.Bytes().size() + 2);  // growing would leave an unwiped copy behind
  for (const char c : text.Bytes()) {
    if (Contains(special, c)) enclosed += escape;
    enclosed += c;
  }
  enclosed += quote;
  return {std::move(enclosed)};
}

String SingleQuoted(const String& text) { return Enclosed(text, '\'', "'", R"('\')"); }

// Closes and reopens the quotes before a backslash. In the encoding of the account's shell, such as
// GBK, the byte before a backslash could form one character with it, but none does with a quote.
String DoubleQuoted(const String& text) { return Enclosed(text, '"', R"("\$`)", R"(""\)"); }

// `echo` is the fixed text, but interprets options and, in some shells, backslashes. It passes an
// empty password and ordinary ones without a leading dash unchanged. All others need `printf`.
String Echo(const String& passwd) {
  if (passwd.IsNil() || (IsOrdinary(passwd) && !StartsWithDash(passwd))) return "echo " + passwd;
  return "printf '%s\\n' " + Quoted(passwd);
}

// A name with a leading dash would be an option for `su`, and the name "-" even after "--". The
// name therefore follows "-- -".
String Su(const String& user, const String& command) {
  const String argument = SingleQuoted(command);
  if (StartsWithDash(user)) return "su -c " + argument + " -- - " + Quoted(user);
  return "su " + Quoted(user) + " -c " + argument;
}

CommandLine AsUser(const String& passwd, const String& user, const String& command,
                   Privilege needs = Privilege::Root) {
  return {Echo(passwd) + " | " + Su(user, command), passwd, user, needs};
}

// The path in a form that `tar` does not read as an option, as standard input or as a remote file.
String Local(const String& path) {
  const auto bytes = path.Bytes();
  const bool isRelative = !bytes.starts_with('/');
  return isRelative && (StartsWithDash(path) || Contains(bytes, ':')) ? "./" + path : path;
}

}  // namespace

String Quoted(const String& value) { return IsOrdinary(value) ? value : SingleQuoted(value); }

CommandLine ForgetCredentials() { return {"sudo -K"}; }

CommandLine CredentialCheck(const String& passwd, const String& user) {
  return AsUser(passwd, user, Echo(passwd) + " | sudo -S /usr/bin/true", Privilege::Check);
}

CommandLine MemberExtract(const String& passwd, const String& user, const String& path) {
  return AsUser(passwd, user,
                "sudo tar -zxPvf " + DoubleQuoted(Local(path)) + " " + ContentRecordPath);
}

CommandLine MemberRead(const String& passwd, const String& user) {
  return AsUser(passwd, user, String("sudo cat ") + ContentRecordPath);
}

CommandLine FullExtract(const String& passwd, const String& user, const String& path) {
  return AsUser(passwd, user, "sudo tar -zxPvf " + DoubleQuoted(Local(path)));
}

CommandLine ListingTest(const String& path) {
  String words;
  for (auto rest = path.Bytes(); !rest.empty();) {
    const bool isBlank = IsBlank(rest.front());
    const auto end =
        std::find_if(rest.begin(), rest.end(), [=](char c) { return IsBlank(c) != isBlank; });
    const auto length = static_cast<std::size_t>(end - rest.begin());
    const String word = rest.substr(0, length);
    words = words + (isBlank ? word : Quoted(Local(word)));
    rest.remove_prefix(length);
  }
  return {"tar -tzf " + words + " " + ContentRecordPath};
}

}  // namespace zelto
