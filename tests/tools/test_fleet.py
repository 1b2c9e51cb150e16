"""The playbook, with this machine in the place of three."""
import os
import re
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

from desktop.updates import make_update

PLAYBOOK = Path(__file__).resolve().parents[2] / "fleet/install-update.yml"
RECORD = Path("/tmp/.KVX.Content")


class Fleet(unittest.TestCase):
    def setUp(self):
        if not shutil.which("ansible-playbook"):
            self.skipTest("ansible-playbook is not installed")
        if os.getuid() != 0:
            self.skipTest("only root can give files to root")
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.addCleanup(RECORD.unlink, missing_ok=True)
        for name in "good", "cut":
            member = {f"{self.folder}/installed/{name}": (os.urandom(10_000), 0o640)}
            make_update(self.folder / f"{name}.gz", "P", members=member)
        os.truncate(self.folder / "cut.gz", 5000)
        (self.folder / "hosts").write_text("one\ntwo\nbad update_file=cut.gz\n[all:vars]\nansible_connection=local\n"
                                           "update_file=good.gz\nansible_become=false\n")

    def play(self, *words):
        """What is said, and of each machine (changed, failed)."""
        here = {"HOME": str(self.folder), "TMPDIR": str(self.folder), "PWD": str(self.folder),
                "ANSIBLE_REMOTE_TMP": str(self.folder / ".ansible/tmp"), "ANSIBLE_NOCOLOR": "1"}
        done = subprocess.run(["ansible-playbook", "-i", "hosts", "-f", "1", PLAYBOOK, *words], cwd=self.folder,
                              env=os.environ | here, capture_output=True, text=True)
        recap = re.findall(r"^(\w+) +: .*changed=(\d).*failed=(\d)", done.stdout, re.M)
        return done.stdout, {host: (int(changed), int(failed)) for host, changed, failed in recap}

    def test_installs_where_the_file_is_good_and_something_differs(self):
        installed = self.folder / "installed"
        RECORD.unlink(missing_ok=True)
        said, counts = self.play("--check")
        self.assertEqual(counts, {"one": (0, 0), "two": (0, 0), "bad": (0, 1)}, said)
        self.assertFalse(installed.exists() or RECORD.exists())
        said, counts = self.play()
        self.assertEqual(counts, {"one": (1, 0), "two": (1, 0), "bad": (0, 1)}, said)
        self.assertRegex(said, r"fatal: \[bad\].*Invalid Update File.*cut.gz.*unexpected end of file")
        self.assertRegex(said, r'ok: \[two\] => {\s+"msg": \[\s+"Product: P"')
        self.assertEqual(os.listdir(installed), ["good"])
        content = (installed / "good").read_bytes()
        RECORD.unlink()
        self.assertEqual(self.play("-l", "one")[1], {"one": (0, 0)})
        (installed / "good").write_text("spoilt")
        self.assertEqual(self.play("-l", "one")[1], {"one": (1, 0)})
        self.assertEqual((installed / "good").read_bytes(), content)
        self.assertEqual({file.name for file in self.folder.iterdir()},
                         {"good.gz", "cut.gz", "hosts", "installed", ".ansible"})
