"""What the vendor's tool refuses and says, as any user; desktop.test_made installs what it makes."""
import os
import subprocess
import tempfile
import unittest
from pathlib import Path

from desktop.updates import make_update

TOOL = Path(__file__).resolve().parents[2] / "tools/zelto-make-update"
RECORD = "/tmp/.KVX.Content"
PREPARE = """umask 022; mkdir -p tree/opt; echo before >update.gz
for name in opt/d opt/c opt/a b; do echo $name >tree/$name; done
make() { "$TOOL" --product P --version V --description D "$@" tree "${file-update.gz}"; }
break_gzip() { printf '#!/bin/sh\\necho begun\\necho >&2\\necho broken >&2\\nsleep 1\\nexit 1' >tree/gzip
               chmod +x tree/gzip; PATH=$PWD/tree:$PATH; }
stop() { until ls update.gz.*/archive 2>&-; do sleep .1; done >&2; kill $!; wait $!; }
"""
REFUSED = [
    ("make --product a=b", 'a=b.*"="'), ("make --version '2\n5'", r"2\?5.*line end"), ("make --product ''", "is empty"),
    ("make --description 'C1 \x85'", "C1.*control"), (r"make --product $(printf 'n\377')", "--product n.*UTF-8"),
    ("SOURCE_DATE_EPOCH=May make", "May.*seconds"), ("file=x.zip make", 'x.zip.*"gz"'), ("file=no/gz make", "may"),
    ("file=tree/opt/x.gz make", "opt/x.gz.*outside"), ("touch tree/tmp; make", "tree/tmp.*; move it"),
    ("mkfifo tree/opt/p; make", "opt/p.*remove it"), ("touch 'tree/li\nne'; make", r"tree/li\?ne.*rename it"),
    ("mkdir tree/bin; make", "tree/bin.*fill it"), ("chmod 2755 tree/opt; make", "tree/opt.*chmod 00755"),
    ("rm -r tree/*; make", "tree.*put into it"), ("break_gzip; make", "update.gz.*broken"),
    ('"$TOOL" --product P tree x.gz', "--help"), ('"$TOOL" --check update.gz', "update.gz.*not in gzip")]


class MakeUpdate(unittest.TestCase):
    def run_in_folder(self, script, **update):
        """What a script did, with the names and the update that were there afterwards."""
        with tempfile.TemporaryDirectory() as folder:
            make_update(Path(folder, "other.gz"), **update)
            done = subprocess.run(["sh", "-c", PREPARE + script], cwd=folder, timeout=60, capture_output=True,
                                  text=True, errors="replace", env=os.environ | {"TOOL": str(TOOL), "TMPDIR": folder})
            return done, set(os.listdir(folder)), Path(folder, "update.gz").read_bytes()

    def test_what_would_not_work_is_refused_and_leaves_all_as_it_was(self):
        for script, pattern in REFUSED:
            with self.subTest(script):
                done, *left = self.run_in_folder(script)
                self.assertRegex(done.stderr, rf"\Azelto-make-update: .*{pattern}.*\n\Z")
                self.assertEqual((done.returncode, left), (2, [{"other.gz", "tree", "update.gz"}, b"before\n"]))
        done, *left = self.run_in_folder(
            'break_gzip; "$TOOL" --product P --version V --description D tree update.gz & stop')
        self.assertEqual((done.returncode, left), (2, [{"other.gz", "tree", "update.gz"}, b"before\n"]))

    def test_the_same_tree_gives_the_same_bytes(self):
        done = self.run_in_folder("make; mv update.gz first; mv tree/opt .; touch -d @1 tree/b; mv opt tree; "
                                  "umask 077; TAR_OPTIONS=--mode=777 GZIP=-1 LC_ALL=C.UTF-8 make && "
                                  "cmp first update.gz && tar -tPzf first")[0]
        self.assertEqual(done.stdout.split("\n")[6:], [RECORD, "/b", "/opt/a", "/opt/c", "/opt/d", ""], done)

    def test_says_what_the_utility_would_and_what_is_odd(self):
        odd = {RECORD: (b"x=1\xff=2\r\nnone\ny=3", 0), "opt/relative": (b"", 0o644), "/usr/": (b"", 0o755)}
        empty, invalid = r"\w+: \nWarning: .*empty.*\n", "Invalid Update File\nz.*other.gz"
        link = f"ln -s tree/b l; tar -czPf other.gz --transform 'flags=r;s,^l$,{RECORD},' l; "
        for prepare, update, pattern in [
                ("", {"product": "\x1bP\x7f", "version": "V\x85", "description": ""},
                 f"Product: P\nVersion: V\n{empty}"),
                ("", {"members": odd},
                 rf"{empty}Version: 1\ufffd\n{empty}Warning: .* UTF-8.*\nWarning: {RECORD} \(2 .*\n"
                 r"Warning: opt/relative .*\nWarning: /usr/ .*\n"),
                ("", {"control": RECORD[1:]}, rf"{invalid}.*Not found.*\n"), (link, {}, rf"{invalid}.*65,536.*\n"),
                ("", {"record": b"x" * 65537}, rf"{invalid}.*65,536.*\n")]:
            said = self.run_in_folder(prepare + '"$TOOL" --check other.gz 2>&1', **update)[0].stdout
            self.assertRegex(said, rf"\A{pattern}\Z")
