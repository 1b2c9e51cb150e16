"""What the tests have in common."""
import contextlib
import os
import secrets
import shutil
import tempfile
import unittest
from pathlib import Path

from desktop.accounts import Account
from desktop.updates import make_update
from desktop.utility import Utility

PROGRAM = os.environ["ZELTO_PROGRAM"]
LONG = "ZELTO_LONG" in os.environ  # minutes in place of seconds


class DesktopTest(unittest.TestCase):
    def setUp(self):
        if os.getuid() != 0:
            self.skipTest("only root can make accounts and take their part")
        # Only hexadecimal digits: a "gz" on the way would start a check while the path is typed.
        self.folder = Path(tempfile.gettempdir(), "zelto-desktop-" + secrets.token_hex(4))
        self.folder.mkdir()
        self.addCleanup(shutil.rmtree, self.folder)
        self.folder.chmod(0o755)
        self.addCleanup(Path("/tmp/.KVX.Content").unlink, missing_ok=True)

    def account(self, password=None, **options):
        return self.enterContext(Account(password or secrets.token_hex(8), **options))

    def authenticated(self, account):
        return self.enterContext(self.running(account))

    @contextlib.contextmanager
    def running(self, account):
        """As authenticated, for a part of a test."""
        with Utility(account.name, PROGRAM) as utility:
            utility.authenticate(account.name, account.password)
            yield utility

    def update(self, name, *texts, **contents):
        """The path of a new update in the test's own folder."""
        make_update(self.folder / name, *texts, **contents)
        return str(self.folder / name)

    def script(self, name, body):
        """The path of a program that every account can start."""
        path = self.folder / name
        path.write_text(f"#!/bin/sh\n{body}\n")
        path.chmod(0o755)
        return str(path)

    def members(self, **files):
        return {f"{self.folder}/installed/{name}": file for name, file in files.items()}

    def assert_installed(self, members):
        for name, (content, mode) in members.items():
            found = os.stat(name)
            self.assertEqual((found.st_uid, found.st_gid, oct(found.st_mode & 0o7777)), (0, 0, oct(mode)), name)
            self.assertEqual(Path(name).read_bytes(), content, name)

    @contextlib.contextmanager
    def tally(self, guarantee):
        """Gives case(is_kept, what), counts the cases, prints them as a row, and fails with the first few."""
        kept = []
        try:
            yield lambda is_kept, what: kept.append((bool(is_kept), what))
        except Exception as error:
            kept.append((False, str(error)))
            raise
        finally:
            broken = [what for is_kept, what in kept if not is_kept]
            print(f"guarantee | {guarantee} | {len(kept)} | {len(broken)}", flush=True)
        self.assertTrue(kept and not broken, f"{guarantee}: {broken[:5] or 'no case'}")
