"""Runs the commands of docs/vendor.md in order, with a private /opt."""
import os
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

import record
from record import RECORD

TOP = Path(__file__).resolve().parents[2]
LINES = (TOP / "docs/vendor.md").read_text().splitlines()
VERIFY = next(line for line in LINES if line.startswith("    gpgv")).strip()
# The commands that the test runs in place of a heading. They check the section above it or prepare the one below.
AT_HEADING = {
    "## Sign": r"""mkdir -p 'tree/opt/new/a folder' tree/opt/old; printf x >'tree/opt/new/a folder/ä\\n "x"'
        printf y >'tree/opt/old/o\\ld'
        zelto-make-update --product P --version V --description D tree sample-2.5.tar.gz""",
    "## On the target": r"""mkdir -p -m 750 /opt/sample /opt/old
        echo old >/opt/sample/greeting; echo old >'/opt/old/o\\ld'
        cp sample-2.5.tar.gz.asc signature; gpg --quick-generate-key other@vendor.example ed25519
        gpg --yes --local-user other@vendor.example --armor --detach-sign sample-2.5.tar.gz
        gpg --verify sample-2.5.tar.gz.asc sample-2.5.tar.gz
        """ + f"if {VERIFY}; then exit 1; fi; mv signature sample-2.5.tar.gz.asc; umask 027",
    "## Install": "test \"$(stat -c %a before-2.5/* | sort -u)\" = 600; touch /opt/new.txt",
    "## Undo": r"""cmp tree/opt/sample/greeting /opt/sample/greeting; test "$(stat -c %a /opt/new/*)" = 755
        echo kept >/opt/new/kept; test -s public/sample-2.5.tar.gz.asc; sha256sum -c public/*.sha256""",
    "## What an update cannot": r"""
        test "$(find /opt/* | sort | paste -sd ' ')" = '/opt/new /opt/new.txt /opt/new/kept'\
' /opt/old /opt/old/o\\ld /opt/sample /opt/sample/greeting'
        test "$(cat /opt/sample/greeting /opt/old/* | paste -sd ' ')" = "old old"
        test "$(stat -c %a /opt/sample)" = 750; umask 022""",
}


class Vendor(unittest.TestCase):
    def script(self):
        for line in LINES:
            checks = [check for heading, check in AT_HEADING.items() if line.startswith(heading)]
            yield checks[0] if checks else line.removeprefix("    ") if line.startswith("    ") else ""
        yield "test -s sample-2.6.tar.gz"

    def test_every_command_of_the_page_works(self):
        if os.getuid() != 0 or not shutil.which("gpg") or not shutil.which("gpgv"):
            self.skipTest("needs root, gpg and gpgv")
        if subprocess.run(["unshare", "--mount", "true"], capture_output=True).returncode:
            self.skipTest("needs the right to make a mount namespace")
        folder = Path(self.enterContext(tempfile.TemporaryDirectory()))
        keys = folder / "keys"
        keys.mkdir(0o700)
        (keys / "gpg.conf").write_text("batch\npinentry-mode loopback\npassphrase ''\n")
        self.addCleanup(subprocess.run, ["gpgconf", "--homedir", keys, "--kill", "all"])
        self.enterContext(record.locked())
        RECORD.mkdir(exist_ok=True)  # planted by another user
        self.addCleanup(RECORD.rmdir)
        script = "mount -t tmpfs -o mode=755 tmpfs /opt\n" + "\n".join(self.script())
        done = subprocess.run(["unshare", "--mount", "sh", "-exc", script], cwd=folder, timeout=300, text=True,
                              stdin=subprocess.DEVNULL, capture_output=True,
                              env=os.environ | {"PATH": f"{TOP}/tools:{os.environ['PATH']}", "GNUPGHOME": str(keys)})
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
