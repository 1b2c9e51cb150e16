"""What the vendor's tool refuses and says, as any user; desktop.test_made installs what it makes."""
import os
import signal
import subprocess
import tarfile
import tempfile
import unittest
from pathlib import Path

from desktop.updates import make_update
from desktop.wait import until

TOOL = Path(__file__).resolve().parents[2] / "tools/zelto-make-update"
RECORD = "/tmp/.KVX.Content"


class MakeUpdate(unittest.TestCase):
    def setUp(self):
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.addCleanup(os.umask, os.umask(0o022))
        self.add("z", "opt/ü", "opt/a")

    def add(self, *files):
        for file in files:
            (self.folder / "tree" / file).parent.mkdir(parents=True, exist_ok=True)
            (self.folder / "tree" / file).write_text(file)

    def start(self, *words, **environment):
        self.before = self.files()
        environment = {**os.environ, "TMPDIR": str(self.folder), **environment}
        return subprocess.Popen([TOOL, *words], env=environment, cwd=self.folder,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, errors="replace")

    def make(self, file="update.gz", product="P", version="V", description="D", **environment):
        return self.start("--product", product, "--version", version, "--description", description, "tree", file,
                          **environment)

    def files(self):
        return {path: path.is_file() and path.read_bytes() for path in self.folder.rglob("*")}

    def assert_refused(self, process, *parts):
        output, errors = process.communicate(timeout=60)
        self.assertEqual((process.returncode, errors.count("\n")), (2, 1), errors)
        self.assertEqual([part for part in parts if part not in errors], [], errors)
        self.assertEqual(self.files(), self.before)
        return output

    def test_the_same_tree_gives_the_same_bytes(self):
        self.make().communicate()
        (self.folder / "tree").rename(self.folder / "first")
        self.add("opt/a", "opt/ü", "z")
        os.utime(self.folder / "tree/z", (1, 1))
        os.umask(0o077)
        self.make("again.TGZ", TAR_OPTIONS="--mode=777", GZIP="-1", LC_ALL="C.UTF-8").communicate()
        self.assertEqual((self.folder / "update.gz").read_bytes(), (self.folder / "again.TGZ").read_bytes())
        with tarfile.open(self.folder / "update.gz") as archive:
            self.assertEqual(archive.getnames(), [RECORD, "/opt/a", "/opt/ü", "/z"])

    def test_refuses_what_would_not_work_and_leaves_all_as_it_was(self):
        self.make().communicate()
        for change, *parts in [
                ({"product": "a=b"}, "a=b", '"="'), ({"version": "2\n5"}, "2?5", "line end"),
                ({"description": "C1 \x85"}, "C1", "control"), ({"product": b"n\xff"}, "--product n", "UTF-8"),
                ({"product": ""}, "name the product"), ({"file": "update.zip"}, "update.zip", '"gz"'),
                ({"file": "tree/opt/x.gz"}, "tree/opt/x.gz", "outside"), ({"file": "no/x.gz"}, "no/x.gz", "may write"),
                ({"SOURCE_DATE_EPOCH": "May"}, "May", "seconds")]:
            with self.subTest(change):
                self.assert_refused(self.make(**change), *parts)
        for command, *parts in [
                ("touch tmp", "tree/tmp", "; move it"), ("mkfifo opt/pipe", "opt/pipe", "remove it"),
                ("touch 'opt/li\nne'", "opt/li?ne", "rename it"), ("mkdir bin", "tree/bin", "fill it"),
                ("chmod 2755 opt", "tree/opt", "chmod 00755"), ("rm -r opt z", "tree", "put into it")]:
            with self.subTest(command):
                subprocess.run(f"cp -r tree kept && cd tree && {command}", shell=True, cwd=self.folder, check=True)
                self.assert_refused(self.make(), *parts)
                subprocess.run("rm -r tree && mv kept tree", shell=True, cwd=self.folder, check=True)
        for words in [], ["--check"], ["--product", "P", "tree", "x.gz"], ["--chekc", "update.gz"]:
            self.assert_refused(self.start(*words), "--help")

    def test_nothing_is_left_when_it_fails_or_is_stopped_midway(self):
        (self.folder / "gzip").write_text("#!/bin/sh\necho begun\necho >&2\necho broken >&2\nsleep 1\nexit 1\n")
        (self.folder / "gzip").chmod(0o755)
        path = f"{self.folder}:{os.environ['PATH']}"
        self.assert_refused(self.make(PATH=path), "update.gz", "broken")
        stopped = self.make(PATH=path)
        until(lambda: any(file.name == "archive" and content for file, content in self.files().items()), 10,
              lambda: "no archive is begun")
        stopped.send_signal(signal.SIGTERM)
        stopped.communicate()
        self.assertEqual((stopped.returncode, self.files()), (2, self.before))

    def test_says_what_the_utility_would_and_what_is_odd(self):
        def check(words=(), name="update.gz", **contents):
            make_update(self.folder / name, *words, **contents)
            return self.start("--check", name)
        odd = {RECORD: (b"x=1\xff=2\r\nnone\ny=3", 0), "opt/relative": (b"", 0o644), "/usr/": (b"", 0o755)}
        empty = r"\w+: ", r"Warning: .*empty.*"
        for contents, *lines in [
                ({"words": ["\x1bP\x7f", "V\x85", ""]}, "Product: P", "Version: V", *empty),
                ({"members": odd}, *empty, "Version: 1\ufffd", *empty, "Warning: .* UTF-8.*",
                 rf"Warning: {RECORD} \(2 in all\).*", "Warning: opt/relative .*", "Warning: /usr/ .*")]:
            output, errors = check(**contents).communicate()
            self.assertRegex(output + errors, r"\A" + "\n".join(lines) + r"\n\Z")
        for contents, words, *parts in [
                ({"control": RECORD[1:]}, "Invalid Update File\n", "update.gz", "Not found"),
                ({"record": b"x" * 65537}, "Invalid Update File\n", "update.gz", "65,536"),
                ({"name": "update.zip"}, "", "update.zip", "name it so")]:
            self.assertEqual(self.assert_refused(check(**contents), *parts), words)


if __name__ == "__main__":
    unittest.main()
