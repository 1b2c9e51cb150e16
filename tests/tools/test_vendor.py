"""Runs the commands of docs/vendor.md in order, with a private /opt."""
import os
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

TOP = Path(__file__).resolve().parents[2]
RECORD = Path("/tmp/.KVX.Content")
PAGE = TOP / "docs/vendor.md"
# The commands that the test runs in place of a heading. They check the section above it or prepare the one below.
AT_HEADING = {
    "## On the target": "mkdir -p /opt/sample; echo old >/opt/sample/greeting",
    "## What an update cannot": "test \"$(cat /opt/sample/greeting)\" = 'Good day.'; test -s public/sample.tar.gz.asc",
    "## Placeholders": "test \"$(cat /opt/sample/greeting)\" = old; test ! -s new.txt; test -s next.tar.gz",
}


class Vendor(unittest.TestCase):
    def script(self):
        for line in PAGE.read_text().splitlines():
            checks = [check for heading, check in AT_HEADING.items() if line.startswith(heading)]
            yield checks[0] if checks else line.removeprefix("    ") if line.startswith("    ") else ""

    def test_every_command_of_the_page_works(self):
        if os.getuid() != 0 or not shutil.which("gpg"):
            self.skipTest("needs root and gpg")
        if subprocess.run(["unshare", "--mount", "true"], capture_output=True).returncode:
            self.skipTest("needs the right to make a mount namespace")
        folder = Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.addCleanup(RECORD.unlink, missing_ok=True)
        keys = folder / "keys"
        keys.mkdir(0o700)
        (keys / "gpg.conf").write_text("batch\npinentry-mode loopback\npassphrase ''\n")
        self.addCleanup(subprocess.run, ["gpgconf", "--homedir", keys, "--kill", "all"])
        script = "set -e; umask 022; mount -t tmpfs tmpfs /opt\n" + "\n".join(self.script())
        done = subprocess.run(["unshare", "--mount", "sh", "-exc", script], cwd=folder, timeout=300, text=True,
                              stdin=subprocess.DEVNULL, capture_output=True,
                              env=os.environ | {"PATH": f"{TOP}/tools:{os.environ['PATH']}", "GNUPGHOME": str(keys)})
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
