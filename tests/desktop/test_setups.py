import datetime
import os
import re
import subprocess
from pathlib import Path

from desktop.accounts import run
from desktop.updates import assert_installed
from desktop.utility import AUTHENTICATE, MAIN, PASSWORD_FIELD, Utility
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

    def long_log(self, account):
        log = self.folder / "log"
        log.write_bytes(bytes(100_000))
        self.defaults(account, f"logfile={log}")

    def private_umask(self, _):
        self.addCleanup(os.umask, os.umask(0o077))

    def test_update_installs_and_a_failure_shows_only_what_tar_wrote(self):
        for kind in "visiblepw", "timestamp_timeout=0", "passprompt_override", self.pam_message, self.ageing, \
                self.long_log, self.private_umask:
            account = self.account()
            kind(account) if callable(kind) else self.defaults(account, kind)
            with self.subTest(kind), self.running(account) as utility:
                members = self.members(**{f"{account.name}/file": (b"new", 0o644)})
                path = self.update("a.gz", account.name, members=members)
                utility.fill("Patchfile:", path)
                utility.shows(account.name, "1.0", "A sample update.")
                utility.start()
                utility.outcome()
                assert_installed(members)
                # The folder is no member.
                self.assertEqual(oct(os.stat(self.folder / "installed" / account.name).st_mode), oct(0o40755))
                utility.answer("Install Another")
                utility.fill("Patchfile:", path)
                utility.until(utility.can_update)
                os.truncate(path, 5)
                utility.start()
                failure = re.compile(r"Bad update file\nErrors .*\n\n(\n|(gzip|tar): .*\n)+\Z")
                utility.dialog("OK")
                utility.until(lambda: failure.match("\n".join(utility.texts(MAIN))))

    def test_unsupported_setup_is_refused_with_its_reason(self):
        reasons = {"requiretty": "sudo accepts this account only on a terminal (requiretty).",
                   "rootpw": "sudo asks for the password of another account (rootpw or targetpw).",
                   "/bin/tcsh": "The account cannot use the utility's wrapper for sudo: its login shell reads commands "
                                "in another way than sh. Use an account whose login shell is bash or zsh."}
        if "sudo-rs" in subprocess.getoutput("sudo --version"):
            del reasons["requiretty"]  # sudo-rs does not support this setting
        for setting, reason in reasons.items():
            account = self.account()
            if setting.startswith("/"):
                run(["usermod", "-s", setting, account.name])
            else:
                self.defaults(account, setting)
            with self.subTest(setting), Utility(account.name, PROGRAM) as utility:
                utility.window(AUTHENTICATE)
                utility.listen("object:property-change:accessible-description")
                utility.try_pair(account.name, account.password)
                utility.until(lambda: utility.description(PASSWORD_FIELD) == reason)
                self.assertEqual([name for name, _ in utility.heard()], [PASSWORD_FIELD])
                self.assertEqual(utility.windows(), [AUTHENTICATE])
