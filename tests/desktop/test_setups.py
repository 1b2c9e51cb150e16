import os
import re
import subprocess
from pathlib import Path

from desktop.accounts import run
from desktop.updates import assert_installed
from desktop.utility import AUTHENTICATE, MAIN, PASSWORD_FIELD, Utility
from base import PROGRAM, DesktopTest

PAM = ("echo auth optional pam_echo.so Sessions are recorded. | cat - /etc/pam.d/sudo >/etc/pam.d/$NAME; "
       "defaults pam_service=$NAME,pam_login_service=$NAME")
SUPPORTED = ["defaults visiblepw", "defaults timestamp_timeout=0", "defaults passprompt_override", PAM,
             "chage -M 10 -W 7 -d $(date -d '6 days ago' +%F) $NAME",
             "head -c 100000 /dev/zero >$FOLDER/log; defaults logfile=$FOLDER/log"]
REFUSED = {
    "gpasswd -d $NAME sudo": "This account may not use sudo.",
    "defaults requiretty": "sudo accepts this account only on a terminal (requiretty).",
    "defaults rootpw": "sudo asks for the password of another account (rootpw or targetpw).",
    "usermod -s /bin/tcsh $NAME":
        "The account cannot use the utility's wrapper for sudo: its login shell reads commands in another way than sh. "
        "Use an account whose login shell is bash or zsh."}


class SetUps(DesktopTest):
    def account_with(self, commands):
        account = self.account()
        for folder in "/etc/sudoers.d", "/etc/pam.d":
            self.addCleanup(Path(folder, account.name).unlink, missing_ok=True)
        run(["env", f"NAME={account.name}", f"FOLDER={self.folder}", "sh", "-ec",
             'defaults() { echo "Defaults:$NAME $1" >/etc/sudoers.d/$NAME; }; ' + commands])
        return account

    def test_update_installs_and_a_failure_shows_only_what_tar_wrote(self):
        self.addCleanup(os.umask, os.umask(0o077))
        for commands in SUPPORTED:
            account = self.account_with(commands)
            with self.subTest(commands), self.running(account) as utility:
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
                utility.check(path)
                os.truncate(path, 5)
                utility.start()
                failure = re.compile(r"Bad update file\nErrors .*\n\n(\n|(gzip|tar): .*\n)+\Z")
                utility.dialog("OK")
                utility.until(lambda: failure.match("\n".join(utility.texts(MAIN))))

    def test_unsupported_account_is_refused_with_its_reason(self):
        for commands, reason in REFUSED.items():
            if "requiretty" in commands and "sudo-rs" in subprocess.getoutput("sudo --version"):
                continue  # sudo-rs does not support this setting
            account = self.account_with(commands)
            with self.subTest(commands), Utility(account.name, PROGRAM) as utility:
                utility.window(AUTHENTICATE)
                utility.listen("object:property-change:accessible-description")
                utility.try_pair(account.name, account.password)
                utility.until(lambda: utility.description(PASSWORD_FIELD) == reason)
                self.assertEqual([name for name, _ in utility.heard()], [PASSWORD_FIELD])
                self.assertEqual(utility.windows(), [AUTHENTICATE])
                utility.click("Cancel")
                self.assertEqual(utility.exit_status(), 0)
