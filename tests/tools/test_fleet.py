"""The playbook, with this machine as each of its hosts."""
import hashlib
import os
import re
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

from desktop.updates import make_update

TOP = Path(__file__).resolve().parents[2]
RECORD = Path("/tmp/.KVX.Content")
NAMES = "mode", "owner", "time", "content", "odd\udcfc\n", "well"


class Fleet(unittest.TestCase):
    def setUp(self):
        if not shutil.which("ansible-playbook"):
            self.skipTest("ansible-playbook is not installed")
        if os.getuid() != 0:
            self.skipTest("needs root to change owners")
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.installed = self.folder / "installed"
        RECORD.unlink(missing_ok=True)
        self.addCleanup(RECORD.unlink, missing_ok=True)
        members = {f"{self.installed}/{name}": (os.urandom(10_000), 0o640) for name in NAMES}
        members |= {f"{self.installed}/link": ("target", "link"), f"{self.installed}/null": ("", "device")}
        for name in "good", "cut":
            make_update(self.folder / f"{name}.gz", "P", members=members)
        os.truncate(self.folder / "cut.gz", 5000)
        self.sha256 = hashlib.sha256((self.folder / "good.gz").read_bytes()).hexdigest()
        (self.folder / "hosts").write_text(
            f"one update_sha256={self.sha256.upper()}\ntwo\ncut update_file=cut.gz\nfake update_sha256={'f' * 64}\n"
            "[all:vars]\nansible_connection=local\nupdate_file=good.gz\nansible_become=false\n")

    def play(self, *words):
        """Returns the output, and (changed, failed) for each host."""
        here = {"HOME": str(self.folder), "TMPDIR": str(self.folder), "PWD": str(self.folder),
                "ANSIBLE_REMOTE_TMP": str(self.folder / ".ansible/tmp"), "ANSIBLE_NOCOLOR": "1",
                "PATH": f"{TOP}/tools:{os.environ['PATH']}"}
        done = subprocess.run(["ansible-playbook", "-i", "hosts", "-f", "1", TOP / "fleet/install-update.yml", *words],
                              cwd=self.folder, env=os.environ | here, capture_output=True, text=True)
        recap = re.findall(r"^(\w+) +: .*changed=(\d).*failed=(\d)", done.stdout, re.M)
        return done.stdout + done.stderr, {host: (int(changed), int(failed)) for host, changed, failed in recap}

    def test_valid_update_installs_only_if_something_differs(self):
        failed = {"cut": (0, 1), "fake": (0, 1)}
        said, counts = self.play("--check")
        self.assertEqual(counts, {"one": (1, 0), "two": (1, 0)} | failed, said)
        self.assertRegex(said, r'ok: \[\w+\] => .*\s+"msg": \[\s+"\S+/good.gz",\s+"Product: P"')
        self.assertRegex(said, r"fatal: \[cut\].*Invalid Update File.*cut.gz.*unexpected end of file")
        self.assertRegex(said, rf"fatal: \[fake\].*good.gz: its SHA-256 is {self.sha256}, not ff")
        self.assertFalse(self.installed.exists() or RECORD.exists())
        said, counts = self.play()
        self.assertEqual(counts, {"one": (1, 0), "two": (1, 0)} | failed, said)
        self.assertEqual({file.name for file in self.folder.iterdir()},
                         {"good.gz", "cut.gz", "hosts", "installed", ".ansible"})
        RECORD.unlink()
        before = (self.installed / "content").read_bytes()
        subprocess.run("chmod 600 mode; chown 1 owner; touch -d @1 time; head -c 10000 /dev/zero >spoilt; "
                       "touch -r content spoilt; cat spoilt >content; touch -r spoilt content; rm odd* null; "
                       "ln -sfn elsewhere link", shell=True, check=True, cwd=self.installed)
        said, counts = self.play("-l", "one", "--check")
        self.assertEqual(re.findall(rf'"{self.installed}/(\S+)"', said),
                         ["content", "link", "mode", "null", r"odd\\udcfc\\n", "owner", "time"], said)
        self.assertEqual(self.play("-l", "one")[1], {"one": (1, 0)})
        self.assertEqual((self.installed / "content").read_bytes(), before)
        self.assertEqual(self.play("-l", "one")[1], {"one": (0, 0)})

    def test_missing_requirements_are_reported(self):
        said, counts = self.play("-l", "one", "-e", "zelto_make_update=/nowhere")
        self.assertRegex(said, r"fatal: \[one\].*Not checked.*nowhere")
        self.assertEqual(counts, {"one": (0, 1)})
        (self.folder / "hosts").write_text("one ansible_connection=local\ntwo ansible_connection=local\n")
        self.assertRegex(self.play()[0], r"fatal: \[one\].*Give the update file: .*It is not set for one, two\.")
