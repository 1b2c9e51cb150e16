"""Refusals, archives and reports of zelto-make-update."""
import hashlib
import os
import subprocess
import tempfile
import unittest
from pathlib import Path

from desktop.updates import make_update

TOOL = Path(__file__).resolve().parents[2] / "tools/zelto-make-update"
RECORD = "/tmp/.KVX.Content"
PREPARE = """umask 022; unset SOURCE_DATE_EPOCH; mkdir -p tree/opt; echo before >update.gz
for name in opt/d opt/c opt/a b; do echo $name >tree/$name; done
make() { "$TOOL" --product P --version V --description D "$@" tree "${file-update.gz}"; }
break_gzip() { printf '#!/bin/sh\\necho begun\\necho >&2\\necho broken >&2\\nsleep 1\\nexit 1' >tree/gzip
               chmod +x tree/gzip; PATH=$PWD/tree:$PATH; }
stop() { until ls update.gz.*/archive 2>&-; do sleep .1; done >&2; kill $!; wait $!; }
disk_with() { trap '' XFSZ; ulimit -f $1; }  # limits each file to $1 blocks
"""
REFUSED = [
    ("make --product a=b", 'a=b.*"="'), ("make --version '2\n5'", r"2\?5.*newline"), ("make --product ''", "is empty"),
    ("make --description 'C1 \x85'", "C1.*control"), (r"make --product $(printf 'n\377')", "--product n.*UTF-8"),
    ("file=x.zip make", 'x.zip.*"gz"'), ("file=tree/opt/x.gz make", "opt/x.gz.*outside"),
    ("touch tree/tmp; make", "move: .*tree/tmp'"), ("mkfifo tree/opt/p; make", "remove: .*opt/p'"),
    ("touch 'tree/li\nne'; make", "rename it: .*tree/li.*"), ("mkdir tree/bin; make", "fill or.*tree/bin'"),
    ("ln -s usr/sbin tree/bin; make", "link at the top.*tree/bin'"),
    ("mkdir -p tree/usr/lib tree/var/lock; ln -s x tree/usr/sbin; touch tree/usr/lib/arm-linux-gnueabihf; make",
     "replace.*remove: (?=.*/usr/sbin')(?=.*/var/lock')(?=.*gnueabihf')"),
    ("rm -r tree/*; make", "tree.*add the files"), ('"$TOOL" --check update.gz', "update.gz.*not in gzip")]
NOT_DONE = [
    ("SOURCE_DATE_EPOCH=May make", "May.*seconds"), ("file=no/gz make", "no/gz: not made: .*No such"),
    ("break_gzip; make", "update.gz: not made: broken"),
    ("head -c 200000 /dev/urandom >tree/r; disk_with 64; make", "update.gz: not made: gzip: .*too large"),
    ("disk_with 0; make", "update.gz: not made: .*too large"),
    ('"$TOOL" --product P tree x.gz', "--help"), ("break_gzip; echo 'kill -9 $$' >tree/gzip; "
                                                  '"$TOOL" --check other.gz', "other.gz: not checked: .*signal 9")]


class MakeUpdate(unittest.TestCase):
    def run_in_folder(self, script, **update):
        """Returns the completed script, and then the names in its folder and the content of update.gz."""
        with tempfile.TemporaryDirectory() as folder:
            make_update(Path(folder, "other.gz"), **update)
            done = subprocess.run(["sh", "-c", PREPARE + script], cwd=folder, timeout=60, capture_output=True,
                                  text=True, errors="replace", env=os.environ | {"TOOL": str(TOOL), "TMPDIR": folder})
            return done, set(os.listdir(folder)), Path(folder, "update.gz").read_bytes()

    def test_refusal_and_failure_have_distinct_statuses_and_change_nothing(self):
        for status, script, pattern in [(2, *case) for case in REFUSED] + [(1, *case) for case in NOT_DONE]:
            with self.subTest(script):
                done, *left = self.run_in_folder(script)
                self.assertRegex(done.stderr, rf"\Azelto-make-update: .*{pattern}.*\n\Z")
                self.assertEqual((done.returncode, left), (status, [{"other.gz", "tree", "update.gz"}, b"before\n"]))
        done, *left = self.run_in_folder(
            'break_gzip; "$TOOL" --product P --version V --description D tree update.gz & stop')
        self.assertEqual((done.returncode, left), (1, [{"other.gz", "tree", "update.gz"}, b"before\n"]))

    def test_help_shows_both_forms_and_the_statuses(self):
        lines = self.run_in_folder('"$TOOL" --help')[0].stdout.splitlines()
        self.assertEqual([line.split(" ")[:2] for line in lines[::2]], [
            ["zelto-make-update", "--product"], ["zelto-make-update", "--check"], ["Exit", "status:"]])

    def test_suggested_command_corrects_the_modes(self):
        done = self.run_in_folder("mkdir -p \"tree/it's/x\"; cp tree/b tree/it*/x; chmod 2755 tree/it*; "
                                  "chmod 700 tree/opt tree/it*/x; make 2>said; sed -n 's/.*run: //p' said >mend; "
                                  ". ./mend; make")[0]
        self.assertEqual((done.returncode, done.stderr), (0, ""))

    def test_same_tree_gives_same_bytes_and_checksum(self):
        done, _, made = self.run_in_folder(
            "make >sums; mv update.gz first; mv tree/opt .; mv opt tree; umask 077; "
            "TAR_OPTIONS=--mode=777 GZIP=-1 LC_ALL=C.UTF-8 make | tail -n 1 >sums && sha256sum --strict -c sums && "
            "cmp first update.gz && tar -tPzf first && cat sums")
        self.assertEqual(done.stdout.split("\n")[:-2],
                         ["update.gz: OK", RECORD, "/b", "/opt/a", "/opt/c", "/opt/d"], done)
        self.assertIn(hashlib.sha256(made).hexdigest() + "  update.gz", done.stdout)

    def test_members_keep_kind_and_mode_but_not_owner(self):
        done = self.run_in_folder(
            "cd tree/opt; chmod 4750 a; chmod 600 c; ln -s ./../b relative; mkdir none; chmod 1770 none; cd ../..; "
            "make >&2; tar -tvPzf update.gz | awk '{ print $1, $2, $6, $8 }'")[0]
        self.assertEqual([line.strip() for line in done.stdout.splitlines()[1:]], [
            "-rw-r--r-- 0/0 /b", "-rwsr-x--- 0/0 /opt/a", "-rw------- 0/0 /opt/c", "-rw-r--r-- 0/0 /opt/d",
            "drwxrwx--T 0/0 /opt/none/", "lrwxrwxrwx 0/0 /opt/relative ./../b"], done)

    def test_times_are_those_of_the_files_up_to_source_date_epoch(self):
        done = self.run_in_folder(
            "touch -d @1000000000 tree/b; touch -d @1500000000 tree/opt/*; list() { TZ=UTC tar -tvPzf update.gz; }; "
            "make >/dev/null; list | grep -c -e 2001-09-09.*/b -e 2017-07-14; "
            "SOURCE_DATE_EPOCH=1200000000 make >/dev/null; list | grep -c -e 2001-09-09.*/b -e 2008-01-10")[0]
        self.assertEqual(done.stdout, "4\n4\n")

    def test_check_reports_what_the_utility_shows(self):
        odd = {RECORD: (b"x=1\xff=2\r\nnone\ny=3", 0)}
        empty, invalid = r"\w+: \nWarning: .*empty\n", "Invalid Update File\nz.*other.gz"
        link = f"ln -s tree/b l; tar -czPf other.gz --transform 'flags=r;s,^l$,{RECORD},' l; "
        for prepare, update, pattern in [
                # A check works even if no file can be written.
                ("disk_with 0; ", {"product": "\x1bP\x7f", "version": "V\x85", "description": ""},
                 f"Product: P\nVersion: V\n{empty}Content: 1 members, 37 bytes .*\n"),
                ("", {"members": odd},
                 rf"Product: 1\ufffd\n{empty}Description: 3\nWarning: .* UTF-8.*\nContent: 2 .*\n"
                 rf"Warning: {RECORD} \(2 .*\n"),
                ("", {"control": RECORD[1:]}, rf"{invalid}.* no member .*\n"), (link, {}, rf"{invalid}.*65,536.*\n"),
                ("", {"record": b"x" * 65537}, rf"{invalid}.*65,536.*\n")]:
            said = self.run_in_folder(prepare + '"$TOOL" --check other.gz 2>&1', **update)[0].stdout
            self.assertRegex(said, rf"\A{pattern}\Z")

    def test_each_kind_of_risk_is_warned_of_and_counted(self):
        plain = ["opt/relative", "/usr/", "/opt/../etc/x", "//./etc/shadow", '/opt/li"\nnk/x', "/opt/well/known"]
        modes = {"/opt/setuid": 0o4755, "/opt/setgid": 0o2755, "/opt/open": 0o666, RECORD + ".d": 0o6777}
        members = {name: (b"12345", 0o644) for name in plain} | {name: (b"", mode) for name, mode in modes.items()}
        members |= {'/opt/li"\nnk': ("/etc", "link"), "/opt/null": ("", "device")}
        said = self.run_in_folder('"$TOOL" --check other.gz', members=dict(sorted(members.items())))[0].stdout
        self.assertIn("Content: 13 members, ", said)
        warnings = [f"{name} ({count} in all): {text}" for name, count, text in [
            ("opt/relative", 1, "installed below"), ("/opt/../etc/x", 1, 'a ".."'),
            (r'/opt/li\"\nnk/x', 1, "installed through"), ("/usr", 1, "sets the mode"), ("/usr", 1, "replaces"),
            ("/etc/shadow", 2, "among"), ("/opt/null", 1, "a device"), ("/opt/setuid", 2, "setuid"),
            ("/opt/setgid", 2, "setgid"), ("/opt/open", 2, "every user")]]
        for warning in warnings:
            self.assertIn("Warning: " + warning, said)
        self.assertEqual(said.count("Warning"), len(warnings))

    @unittest.skipIf(os.getuid() != 0, "needs root to change owners")
    def test_unsupported_attributes_are_warned_of(self):
        done = self.run_in_folder("chown 12345 tree/b; chgrp 12345 tree/opt/a; setcap cap_chown+ep tree/opt/c; make")[0]
        self.assertRegex(done.stdout, r"owner .*\(2 in all\)\n.*capability .*\(1 in all\)\n")
