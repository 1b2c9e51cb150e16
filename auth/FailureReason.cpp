#include "auth/FailureReason.h"

namespace zelto {

namespace {

constexpr const char* notAccepted = "The name or the password was not accepted.";
constexpr const char* needsMore = "The account needs more than a password.";
constexpr const char* noRight = "This account may not use sudo.";

struct Phrase {
  const char* Part;
  const char* Reason;
};

// Messages of `su` and `sudo` in the C locale. The first match counts.
constexpr Phrase phrases[] = {
    {"account has expired", "This account has expired."},
    {"required to change your password",
     "The password of this account has expired. Change it with passwd first."},
    // Prompts for a second factor, for which there is no input.
    {"erification code", needsMore},
    {"ne-time ", needsMore},
    {"asscode", needsMore},
    {" OTP", needsMore},
    {" PIN", needsMore},
    {"your finger", needsMore},
    {"Authentication failure", notAccepted},
    {" does not exist", notAccepted},
    {"must have a tty", "sudo accepts this account only on a terminal (requiretty)."},
    {"not in the sudoers file", noRight},
    {"is not allowed to execute", noRight},
    {"may not run sudo", noRight},
    {"I'm afraid I can't do that", noRight},
};

bool Contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

// True if `su` prompted again after the password. A prompt ends without a newline, and the first
// one is not part of the text if it has PAM's default wording.
bool HasSecondPrompt(std::string_view text) {
  const auto failure = text.find("su: Authentication failure");
  if (failure == std::string_view::npos) return false;
  const auto before = text.substr(0, failure);
  const auto prompts = before.substr(before.rfind('\n') + 1);
  const auto first = prompts.find(": ");
  return first != std::string_view::npos &&
         (!Contains(prompts, "ass") || Contains(prompts.substr(first + 1), ": "));
}

std::string_view LastLine(std::string_view text) {
  if (text.ends_with('\n')) text.remove_suffix(1);
  return text.substr(text.rfind('\n') + 1);
}

}  // namespace

String FailureReason(const String& text, Int32 status, PriorCheck prior, const String& passwd) {
  constexpr Int32 notFound = 127;
  const auto bytes = text.Bytes();
  if (status == notFound && Contains(bytes, " su: ")) return "The program su is missing.";
  if (status == notFound && Contains(bytes, "sudo")) return "The program sudo is missing.";
  if (HasSecondPrompt(bytes)) return needsMore;
  for (const auto& [part, reason] : phrases) {
    if (Contains(bytes, part)) return reason;
  }
  if (Contains(bytes, "incorrect password attempt") ||
      Contains(bytes, "Authentication failed, try again")) {
    return prior == PriorCheck::None ? notAccepted
                                     : "sudo asks for the password of another account (rootpw or "
                                       "targetpw).";
  }
  const auto line = LastLine(bytes);
  const bool isShowable = !line.empty() && (passwd.IsNil() || !Contains(line, passwd.Bytes()));
  return isShowable ? String(line) : "The command failed without a message that can be shown.";
}

}  // namespace zelto
