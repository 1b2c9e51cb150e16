import datetime
import os
from pathlib import Path

from desktop.accounts import run
from desktop.utility import AUTHENTICATE, PASSWORD_FIELD, Utility
from base import PROGRAM, DesktopTest


class SetUps(DesktopTest):
    def write(self, path, text):
        self.addCleanup(path.unlink, missing_ok=True)
        path.write_text(text)

    def defaults(self, account, setting):
        self.write(Path("/etc/sudoers.d", account.name), f"Defaults:{account.name} {setting}\n")

    def pam_message(self, account):
        """Gives the account a PAM configuration of `sudo` that prints a message."""
        self.write(Path("/etc/pam.d", account.name), "auth optional pam_echo.so Sessions are recorded.\n"
                   + Path("/etc/pam.d/sudo").read_text())
        self.defaults(account, f"pam_service={account.name}, pam_login_service={account.name}")

    def ageing(self, account):
        changed = datetime.date.today() - datetime.timedelta(days=6)
        run(["chage", "-M", "10", "-W", "7", "-d", str(changed), account.name])

    def test_update_installs_and_a_failure_shows_only_what_tar_wrote(self):
        for kind in "visiblepw", "timestamp_timeout=0", "passprompt_override", self.pam_message, self.ageing:
            account = self.account()
            kind(account) if callable(kind) else self.defaults(account, kind)
            with self.subTest(kind), self.running(account) as utility:
                members = self.members(**{account.name: (b"new", 0o644)})
                path = self.update("a.gz", account.name, members=members)
                utility.fill("Patchfile:", path)
                utility.shows(account.name, "1.0", "A sample update.")
                utility.start()
                utility.outcome()
                self.assert_installed(members)
                utility.answer("Install Another")
                utility.fill("Patchfile:", path)
                utility.until(utility.can_update)
                os.truncate(path, 5)
                utility.start()
                self.assertRegex("\n".join(utility.dialog("OK")),
                                 r"\ABad update file\nErrors .*\n\n(\n|(gzip|tar): .*\n)+\Z")

    def test_unsupported_setup_is_refused_with_its_reason(self):
        reasons = {"requiretty": "sudo accepts this account only on a terminal (requiretty).",
                   "rootpw": "sudo asks for the password of another account (rootpw or targetpw)."}
        if "sudo-rs" in run(["sudo", "--version"]):
            del reasons["requiretty"]  # sudo-rs does not support this setting
        for setting, reason in reasons.items():
            account = self.account()
            self.defaults(account, setting)
            with self.subTest(setting), Utility(account.name, PROGRAM) as utility:
                utility.window(AUTHENTICATE)
                utility.listen("object:property-change:accessible-description")
                utility.try_pair(account.name, account.password)
                utility.until(lambda: utility.description(PASSWORD_FIELD) == reason)
                self.assertEqual([name for name, _ in utility.heard()], [PASSWORD_FIELD])
                self.assertEqual(utility.windows(), [AUTHENTICATE])
