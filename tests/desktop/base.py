"""The common base of the desktop tests."""
import contextlib
import os
import re
import unittest
from pathlib import Path

from desktop import signals
from desktop.accounts import Account
from desktop.updates import make_update, shared_folder
from desktop.utility import Utility
import record

PROGRAM = os.environ["ZELTO_PROGRAM"]
LONG = "ZELTO_LONG" in os.environ  # minutes instead of seconds

signals.clean_up_on_signals()


class DesktopTest(unittest.TestCase):
    USES_RECORD = True

    def run(self, result=None):
        try:
            return super().run(result)
        finally:
            self.doCleanups()  # a KeyboardInterrupt leaves them

    def setUp(self):
        if os.getuid() != 0:
            self.skipTest("only root can create accounts and run programs as them")
        self.folder = self.enterContext(shared_folder())
        if self.USES_RECORD:
            self.enterContext(record.locked())
            self.addCleanup(record.RECORD.unlink, missing_ok=True)

    def account(self, password=None, **options):
        account = self.enterContext(Account(password, **options))
        home = Path("~" + account.name).expanduser()
        self.addCleanup(self._assert_nothing_kept, home, set(home.rglob("*")))
        return account

    def _assert_nothing_kept(self, home, before):
        # The window manager, sudo, the accessibility bus and the portal create these files. Other programs of the
        # session can leave a core file. test_hardening.Secret looks for a core file of the utility.
        others = re.compile(r"/(\.cache(/openbox.*)?|\.config(/(dconf|gtk-3\.0).*)?|\.sudo_as_admin_successful|core"
                            r"|\.local(/share(/(flatpak.*|recently-used.xbel))?)?)$")
        kept = [str(path) for path in set(home.rglob("*")) - before if not others.search(str(path))]
        self.assertEqual(kept, [])

    def authenticated(self, account):
        return self.enterContext(self.running(account))

    @contextlib.contextmanager
    def running(self, account):
        """Like authenticated(), but ends the program at the end of the `with` block."""
        with Utility(account.name, PROGRAM) as utility:
            utility.authenticate(account.name, account.password)
            yield utility

    def update(self, name, *texts, **contents):
        """Makes an update in the folder of the test. Returns its path."""
        make_update(self.folder / name, *texts, **contents)
        return str(self.folder / name)

    def members(self, **files):
        return {f"{self.folder}/installed/{name}": file for name, file in files.items()}
