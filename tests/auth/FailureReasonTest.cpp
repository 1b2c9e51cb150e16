#include "auth/FailureReason.h"
#include "tests/StubPrograms.h"

using namespace zelto;

// Messages of util-linux 2.38 to 2.42, sudo 1.9.13 to 1.9.17 and sudo-rs 0.2.5 and
// 0.2.15.
TEST(FailureReason, NamesTheCauseThatAUserCanRemedy) {
  const std::string notAccepted = "The name or the password was not accepted.";
  const std::string needsMore = "The account needs more than a password.";
  const std::string noRight = "This account may not use sudo.";
  const std::string otherPassword =
      "sudo asks for the password of another account (rootpw or targetpw).";
  const std::string wrong =
      "Sorry, try again.\n\nsudo: no password was provided\nsudo: 1 incorrect password attempt\n";
  const std::string wrongRs =
      "[sudo: ] Password: \nsudo: Authentication failed, try again.\n[sudo: ] Password: \n"
      "sudo-rs: Maximum 3 incorrect authentication attempts\n";
  const struct {
    std::string Text;
    std::string Reason;
    Int32 Status = 1;
    PriorCheck Prior = PriorCheck::Su;
  } cases[] = {
      {"su: Authentication failure\n", notAccepted},
      {"LDAP Password: su: Authentication failure\n", notAccepted},
      {"Token: su: Authentication failure\n", needsMore},
      {"LDAP Password: Token: su: Authentication failure\n", needsMore},
      {"Verification code: \nsudo: no password was provided\nsudo: 1 incorrect password attempt\n",
       needsMore},
      {"su: user x does not exist or the user entry does not contain all the required fields\n",
       notAccepted},
      {wrong, notAccepted, 1, PriorCheck::None},
      {wrongRs, notAccepted, 1, PriorCheck::None},
      {wrong, otherPassword},
      {wrongRs, otherPassword},
      {"sudo: Authentication failed, try again.\nsudo: Authentication required but not attempted\n",
       otherPassword},
      {"zt is not in the sudoers file.\n", noRight},
      {"Sorry, user zt is not allowed to execute '/usr/bin/true' as root on vm.\n", noRight},
      {"sudo-rs: I'm sorry zt. I'm afraid I can't do that\n", noRight},
      {"sudo: sorry, you must have a tty to run sudo\n",
       "sudo accepts this account only on a terminal (requiretty)."},
      {"Your account has expired; please contact your system administrator.\n"
       "su: Authentication failure\n",
       "This account has expired."},
      {"Changing password for zt.\nYou are required to change your password immediately "
       "(administrator enforced).\nCurrent password: su: Authentication token manipulation error\n",
       "The password of this account has expired. Change it with passwd first."},
      {"sh: 2: su: not found\n", "The program su is missing.", 127},
      {"sh: 1: sudo: not found\nbash: line 1: sudo: command not found\n",
       "The program sudo is missing.", 127},
      {"sh: 1: sudo: not found\nsu: Authentication failure\n", notAccepted},
      {"The command could not be started: No file for the output can be made.\n",
       "The command could not be started: No file for the output can be made.", 127},
      {"first\nsu: Permission denied\n", "su: Permission denied"},
      {"", "The command failed without a message that can be shown."},
      {"csh: it's secret: unmatched\n", "The command failed without a message that can be shown."},
  };
  for (const auto& [text, reason, status, prior] : cases) {
    EXPECT_EQ(Bytes(FailureReason(text, status, prior, "it's secret")), reason) << text;
  }
}
