"""The playbook, with this machine as each of its hosts."""
import gzip
import hashlib
import os
import re
import shutil
import subprocess
import tarfile
import tempfile
import time
import unittest
from pathlib import Path

from archives import member, packed
from desktop.updates import make_update
import record
from record import RECORD

TOP = Path(__file__).resolve().parents[2]
NAMES = "mode", "owner", "time", "content", "odd\udcfc\n", "well", *(f"z{number}" for number in range(20))
GUIDE = re.sub(r" \\\n *", " ", (TOP / "docs/fleet.md").read_text())


class Fleet(unittest.TestCase):
    def setUp(self):
        if not shutil.which("ansible-playbook"):
            self.skipTest("ansible-playbook is not installed")
        if os.getuid() != 0:
            self.skipTest("needs root to change owners")
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.installed, self.update, self.backup = (self.folder / name for name in ("installed", "good.gz", "backup"))
        self.enterContext(record.locked())
        shutil.rmtree(RECORD, ignore_errors=True)
        RECORD.unlink(missing_ok=True)
        self.addCleanup(shutil.rmtree, RECORD, ignore_errors=True)
        members = {f"{self.installed}/{name}": (os.urandom(10_000), 0o640) for name in NAMES}
        members |= {f"{self.installed}/link": ("target", "link"), f"{self.installed}/null": ("", "device")}
        make_update(self.update, "P", members=members)
        (self.folder / "cut.gz").write_bytes(self.update.read_bytes()[:5000])
        self.hosts("one update_sha256=" + hashlib.sha256(self.update.read_bytes()).hexdigest().upper(), "two")

    def hosts(self, *lines, become="ansible_become=false"):
        (self.folder / "hosts").write_text("\n".join([*lines, "[all:vars]", "ansible_connection=local", become,
                                                      f"update_file={self.update}"]) + "\n")

    def ansible(self, *words, command=("ansible-playbook", TOP / "fleet/install-update.yml"), before=""):
        """Returns the output. before: shell commands in the same process."""
        here = {"HOME": str(self.folder), "ANSIBLE_NOCOLOR": "1", "PATH": f"{TOP}/tools:{os.environ['PATH']}",
                "ANSIBLE_REMOTE_TMP": str(self.folder / "remote"), "LC_ALL": "C.UTF-8"}
        line = ["sh", "-ec", before + '\nexec "$@"', "sh", *command, "-i", "hosts", "-f", "1", *words]
        done = subprocess.run(line, cwd=self.folder, env=os.environ | here, timeout=120, stdin=subprocess.DEVNULL,
                              capture_output=True, text=True)
        return done.stderr + done.stdout

    def assert_summary(self, output, *lines):
        self.assertEqual(re.split(r"\nUPDATE SUMMARY \**\n", output)[-1].splitlines(), list(lines), output)

    def test_installs_only_if_something_differs(self):
        output = self.ansible("--check")
        self.assert_summary(output, "to be changed: 2: one, two")
        self.assertRegex(output, r'ok: \[one\] => .*\s+"msg": \[\s+"\S+/good.gz",\s+"Product: P"')
        self.assertRegex(output, r'"28 paths",\n +"\S+/content",\n(?: +"\S+",?\n){19} +\]')
        self.assertFalse(self.installed.exists())
        RECORD.mkdir()
        (RECORD / "planted").touch()
        self.addCleanup(os.umask, os.umask(0o027))
        self.assert_summary(self.ansible(), "installed: 1: one", "already equal: 1: two")
        self.assertEqual(self.installed.stat().st_mode & 0o777, 0o755)
        self.assertEqual(list((self.folder / "remote").iterdir()), [])
        before = (self.installed / "content").read_bytes()
        subprocess.run("chmod 600 mode; chown 1 owner; touch -d @1 time; head -c 10000 /dev/zero >spoilt; "
                       "touch -r content spoilt; cat spoilt >content; touch -r spoilt content; rm odd* null; "
                       "ln -sfn elsewhere link", shell=True, check=True, cwd=self.installed)
        output = self.ansible("-l", "one", "--check")
        self.assertEqual(re.findall(rf'"{self.installed}/(\S+)"', output),
                         ["content", "link", "mode", "null", r"odd\\udcfc\\n", "owner", "time"], output)
        self.assert_summary(self.ansible("-l", "one"), "installed: 1: one")
        self.assertEqual((self.installed / "content").read_bytes(), before)

    def test_nothing_is_copied_if_a_file_or_a_variable_is_refused(self):
        update_file, other = f"update_file={self.folder}", self.folder / "other.gz"
        name = member("/huge", b"", tarfile.GNUTYPE_LONGNAME, size=600 << 20)
        other.write_bytes(gzip.compress(name) + gzip.compress(bytes(1 << 20)) * 600)
        for words, reason in [
                (["-e", "update_file=good.gz"], "Give the absolute path .* not set for one, two"),
                (["-e", "batch=abc"], "Give batch as"), (["-e", "copies=abc"], "copies, max_failures and wait"),
                (["-e", "backup=here"], "backup as an absolute path"),
                (["-e", f"{update_file}/cut.gz"], "Invalid Update File.*cut.gz.*unexpected end of file"),
                (["-e", f"{update_file}/other.gz", "-e", "zelto_make_update=true", "-l", "two"], "too much memory"),
                (["-e", "zelto_make_update=true"], "good.gz: tar and Python read different members"),
                (["-e", "zelto_make_update=/nowhere"], "Not checked.*nowhere.*No such file"),
                (["-e", f"update_sha256={'f' * 64}"], "good.gz: its SHA-256 is .*, not ff")]:
            with self.subTest(words):
                self.hosts("one", "two", become="ansible_become=true ansible_become_exe=/nowhere")
                output = self.ansible(*words)
                self.assertEqual(len(re.findall(rf'^(?:fatal|failed): .*"msg": .*{reason}', output, re.M)), 1, output)
                self.assertRegex(output, rf"SUMMARY \**\nfailed: 1 \(.*{reason}")
                self.assertNotIn("Install the update", output)

    def test_machine_fails_with_its_reason(self):
        evil = self.folder / "evil.gz"
        make_update(evil, members={f"{self.installed}/evil": (b"", 0o644)})
        (self.folder / "bin").mkdir()
        stub = self.folder / "bin/tar"
        use_stub = f"PATH={stub.parent}:$PATH; chmod +x {stub}; export VERSION="
        stub.write_text(f'#!/bin/sh\n[ "$1" != --version ] || eval "$VERSION"\nexec {shutil.which("tar")} "$@"\n')
        for before, words, reason in [
                (f"{use_stub}'cp {evil} {self.update}'", [], "The copied file is not the one that was checked"),
                ("exec 9>/run/zelto-update.lock; flock 9", ["-e", "wait=1"], "Another .* has held .* 1 seconds"),
                (f"{use_stub}'echo BusyBox; exit'", [], "The machine needs GNU tar and gzip")]:
            with self.subTest(reason):
                original = self.update.read_bytes()
                output = self.ansible("-e", "batch=1", *words, before=before)
                self.update.write_bytes(original)
                self.assertRegex(output, rf"(?s)SUMMARY.*\nfailed: 1 \({reason}\): one\nnot started: 1: two\n\Z")

    def test_space_is_compared_before_the_copy(self):
        self.installed.mkdir()
        if subprocess.run(["mount", "-t", "tmpfs", "-o", "size=64k", "tmpfs", self.installed]).returncode:
            self.skipTest("needs the right to mount")
        self.addCleanup(subprocess.run, ["umount", self.installed])
        self.assertIn(f"failed: 1 (The file system of {self.installed} needs 260000 bytes, but only 65536 are free)",
                      self.ansible("-l", "one", "--check"))

    def test_run_stops_if_too_many_machines_of_a_batch_fail(self):
        self.hosts("one", "two ansible_python_interpreter=/nowhere", "three")
        self.assertIn("\nnot started: 1: three", self.ansible("--check", "-e", "batch=2"))
        self.assertIn("\nto be changed: 2: one, three",
                      self.ansible("--check", "-e", "batch=2", "-e", "max_failures=50"))

    def test_members_are_those_of_tar(self):
        first, second = (member(f"{self.installed}/{name}") for name in ("first", "second"))
        self.update.write_bytes(gzip.compress(member() + first) + packed(second))
        self.hosts("one")
        self.assertIn('"2 paths"', self.ansible("--check"))

    def test_leftovers_of_interrupted_runs_are_removed(self):
        copies = [self.folder / f"remote/ansible-tmp-{name}/zelto-update.tar.gz" for name in ("old", "open", "new")]
        for copy in copies:
            copy.parent.mkdir(parents=True)
            copy.touch()
            os.utime(copy, (0, 0) if copy != copies[2] else None)
        with copies[1].open():
            os.utime(copies[2], (time.time() + 60,) * 2)
            self.ansible("-l", "one")
        self.assertEqual([copy.parent.exists() for copy in copies], [False, True, True])

    def test_guide_says_how_to_go_back(self):
        self.hosts("one")
        self.installed.mkdir()
        old = self.installed / "content"
        old.write_text("old")
        old.chmod(0o600)
        self.ansible("-e", f"backup={self.backup}")
        self.assertNotEqual(old.read_bytes(), b"old")
        self.assertEqual((self.backup / "before.tar.gz").stat().st_mode & 0o777, 0o600)
        command = re.search(r"-a '(cd /var/backups/sample .*)'", GUIDE)[1]
        command = command.replace("/var/backups/sample", str(self.backup))
        output = self.ansible("-m", "ansible.builtin.shell", "-a", command, "one", command=["ansible"])
        self.assertIn("rc=0", output)
        self.assertEqual((old.read_text(), old.stat().st_mode & 0o777), ("old", 0o600))
        self.assertEqual((list(self.installed.iterdir()), self.backup.exists()), ([old], False))
