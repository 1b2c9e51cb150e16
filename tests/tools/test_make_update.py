"""Refusals, archives and reports of zelto-make-update."""
import hashlib
import os
import re
import signal
import subprocess
import tempfile
import unittest
from pathlib import Path

from archives import archives
from desktop.updates import make_update

TOOL = Path(__file__).resolve().parents[2] / "tools/zelto-make-update"
RECORD = "/tmp/.KVX.Content"
LEFT = {"other.gz", "tree", "update.gz"}
ORDINARY = ["setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"] if os.getuid() == 0 else []
PREPARE = """umask 022; unset SOURCE_DATE_EPOCH; mkdir -p tree/opt; echo before >update.gz
for name in opt/d opt/c opt/a b; do echo $name >tree/$name; done
make() { "$TOOL" --product P --version V --description D "$@" "${tree-tree}" "${file-update.gz}"; }
check() { "$TOOL" --check "${1-other.gz}"; }
stub() { mkdir tree/stubs; printf '#!/bin/sh\\n%s\\n' "$2" >tree/stubs/$1; chmod +x tree/stubs/$1
         PATH=$PWD/tree/stubs:$PATH; }
disk_with() { ulimit -f $1; }  # limits each file to $1 blocks
folders() { for number in $(seq $1); do mkdir "tree/it's $number"; cp tree/b "tree/it's $number"; done; }
"""
REFUSED = [
    ("make --product a=b", 'a=b.*"="'), ("make --version '2\n5'", r"2\?5.*newline"), ("make --product ''", "is empty"),
    ("make --description 'C1 \x85'", "C1.*control"), (r"make --product $(printf 'n\377')", "--product n.*UTF-8"),
    ("make --description $(printf %070000d 1)", "70,033 bytes.* 65,536; shorten"),
    ("file=x.zip make", 'x.zip.*"gz"'), ("file=tree/opt/x.gz make", "opt/x.gz.*outside"),
    ("tree=/. make", "root directory"), ("rm -r tree/*; make", "tree.*add the files"),
    ("touch tree/tmp; make", "move: .*tree/tmp"), ("mkfifo tree/opt/p; make", "remove: .*opt/p"),
    ("touch 'tree/li\nne'; make", r"rename it: \S*/tree/li\$'\\012'ne"), ("mkdir tree/bin; make", "fill or.*tree/bin"),
    ("ln -s usr/sbin tree/bin; make", "link at the top.*tree/bin"),
    ("mkdir -p tree/usr/lib tree/var/lock; ln -s x tree/usr/sbin; touch tree/usr/lib/arm-linux-gnueabihf; make",
     "replace.*remove: (?=.*/usr/sbin)(?=.*/var/lock)(?=.*gnueabihf)"),
    ("for n in $(seq 30); do mkfifo tree/opt/p$n; done; make", r"remove: (\S+/p\d+ ){20}and 10 more"),
    ("mkfifo tree/f.gz; check tree/f.gz", "f.gz: it is not a regular file")]
NOT_DONE = [
    ("SOURCE_DATE_EPOCH=May make", "May.*seconds"), (f"SOURCE_DATE_EPOCH={9:020} make", "0009: .* 11 digits"),
    ("file=no/gz make", "no/gz: not made: .*No such"), ("tree=tree/b make", "tree/b: not an accessible directory"),
    ("tree= make", "DIRECTORY is empty"), ("stub gzip 'echo >&2; echo broken >&2; exit 1'; make",
                                           "update.gz: not made: broken"),
    ("stub tar 'rm ../tree/b; exec /usr/bin/tar \"$@\"'; make", r'not made: .*"\./b": .*; do not change the tree'),
    ("head -c 200000 /dev/urandom >tree/r; disk_with 64; make", "update.gz: not made: .*limit exceeded"),
    ("disk_with 0; make", "update.gz: not made: .*too large"),
    ("stub gzip 'kill -9 $$'; check", "other.gz: not checked: .*signal 9"), ("check none.gz", "none.gz: No such"),
    ("make --check other.gz", "--check takes .*--help"), ('"$TOOL" --product P tree x.gz', "--version --desc.*--help"),
    ("make --unknown", "--unknown.*--help")]


class MakeUpdate(unittest.TestCase):
    def run_in_folder(self, script, user=(), **update):
        """Returns the completed script, and then the names in its folder and the content of update.gz."""
        with tempfile.TemporaryDirectory() as folder:
            make_update(Path(folder, "other.gz"), **update)
            if user:
                os.chmod(folder, 0o777)
            done = subprocess.run([*user, "sh", "-c", PREPARE + script], cwd=folder, timeout=60, capture_output=True,
                                  text=True, errors="replace", env=os.environ | {"TOOL": str(TOOL), "TMPDIR": folder})
            subprocess.run(["chmod", "-R", "u+rwX", folder], check=True)
            return done, set(os.listdir(folder)), Path(folder, "update.gz").read_bytes()

    def assert_stopped(self, status, script, pattern, user=()):
        with self.subTest(script):
            done, *left = self.run_in_folder(script, user)
            self.assertRegex(done.stderr, rf"\Azelto-make-update: .*{pattern}.*\n\Z")
            self.assertEqual((done.returncode, left), (status, [LEFT, b"before\n"]))

    def test_refusal_and_failure_have_distinct_statuses_and_change_nothing(self):
        for case in REFUSED:
            self.assert_stopped(2, *case)
        for case in NOT_DONE:
            self.assert_stopped(1, *case)

    def test_each_archive_has_the_result_of_the_utility(self):
        with tempfile.TemporaryDirectory() as folder:
            for name, (shown, data) in archives().items():
                with self.subTest(name):
                    Path(folder, name).write_bytes(data)
                    done = subprocess.run([TOOL, "--check", name], cwd=folder, capture_output=True, timeout=60)
                    output = done.stdout.decode()
                    texts = re.findall(r"^(?:Product|Version|Description): (.*)$", output, re.M)
                    self.assertEqual((done.returncode, "|".join(texts)), (0, shown) if shown else (2, ""), done)
                    self.assertEqual(output.startswith("Invalid Update File\n"), shown is None)
            self.assertEqual(set(os.listdir(folder)), set(archives()))

    def test_refusals_for_an_ordinary_user(self):
        if subprocess.run([*ORDINARY, "test", "-r", TOOL]).returncode:
            self.skipTest("the tool is not readable for other users")
        for script, pattern in [("chmod 0 tree/opt; make", "cannot be read.* as its owner: .*tree/opt"),
                                ("chmod 444 tree/opt; make", "as its owner: .*tree/opt"),
                                ("chmod 0 tree/b tree; chmod 500 tree; make", "as its owner: .*tree/b"),
                                ("chmod 0 tree; make", "as its owner: .*tree"), ("tree=/ make", "root directory")]:
            self.assert_stopped(2, script, pattern, ORDINARY)
        self.assert_stopped(1, "cp other.gz tree/gz; chmod 0 tree/gz; check tree/gz", "not checked: .*mode", ORDINARY)

    def test_signal_ends_the_command_at_once_after_the_clean_up(self):
        for number in signal.SIGHUP, signal.SIGINT, signal.SIGQUIT, signal.SIGTERM:
            with self.subTest(number):
                done, *left = self.run_in_folder(
                    f'stub gzip "kill -{number:d} $$; exec sleep 99"; '  # $$ becomes that of the command
                    'exec "$TOOL" --product P --version V --description D tree update.gz')
                self.assertEqual((done.returncode, done.stderr, left), (-number, "", [LEFT, b"before\n"]))

    def test_update_is_in_place_before_anything_is_printed(self):
        done, left, made = self.run_in_folder("make >/dev/full; check >/dev/full; check /dev/null >/dev/full")
        self.assertRegex(done.stderr, r"\A(zelto-make-update: the report is incomplete: No space.*\n){2}.*\n\Z")
        self.assertEqual((done.returncode, left, made[:2]), (2, LEFT, b"\x1f\x8b"))

    def test_options_have_the_forms_of_gnu(self):
        done = self.run_in_folder(
            '"$TOOL" tree --product=P --vers 0.9 update.gz --version -1 --description -d; mkdir d; cd d; '
            '"$TOOL" --product=P --version=-1 --description=-d -- ../tree -gz && cmp ../update.gz ./-gz && echo same; '
            '"$TOOL" -h; "$TOOL" --version; bash -c \'. "$TOOL.bash"; _zelto_make_update x --d y; echo $COMPREPLY\'')[0]
        self.assertRegex(done.stdout, r"\AProduct: P\nVersion: -1\nDescription: -d\n(?s:.*)\nsame\n"
                         r"zelto-make-update --product(?s:.*)\nzelto-make-update --check(?s:.*)\nExit status: .*\n"
                         r"zelto-make-update [\d(].*\n--description\n\Z", done)

    def test_suggested_command_corrects_the_modes(self):
        for count in 5, 25:
            done = self.run_in_folder(f"folders {count}; chmod 2755 tree/it*; chmod 700 tree/opt; "
                                      "make 2>said; sed -n 's/.*run: //p' said >mend; . ./mend; make")[0]
            self.assertEqual((done.returncode, done.stderr), (0, ""))

    def test_same_tree_gives_same_bytes_and_checksum(self):
        done, _, made = self.run_in_folder(
            "make >sums; mv update.gz first; mv tree/opt .; mv opt tree; umask 077; mkdir 'back\\\\slash\n'; "
            "cp -a tree back*; (cd back*; export TAR_OPTIONS=--mode=777 GZIP=-1 LC_ALL=C; make >../sums; mv u* ..); "
            "tail -n 1 sums | sha256sum --strict -c && cmp first update.gz && tar -tPzf first && tail -n 1 sums")
        self.assertEqual(done.stdout.split("\n")[:-2],
                         ["update.gz: OK", RECORD, "/b", "/opt/a", "/opt/c", "/opt/d"], done)
        self.assertIn(hashlib.sha256(made).hexdigest() + "  update.gz", done.stdout)
        # Not with --check, because the sha256sum of Rust's coreutils does not read the escaped name that it prints.
        done = self.run_in_folder(
            "mkdir 'a\\b'; file='a\\b/x.gz' make | tail -n 1 >sum; sha256sum 'a\\b/x.gz' | diff sum - && echo OK")[0]
        self.assertEqual(done.stdout, "OK\n")

    def test_members_keep_kind_and_mode_but_not_owner(self):
        done = self.run_in_folder(
            "cd tree/opt; chmod 4750 a; chmod 600 c; ln c e; ln -s ./../b relative; mkdir none; chmod 1770 none; "
            "cd ../..; make >&2; tar -tvPzf update.gz | awk '{ print $1, $2, $6, $8 }'")[0]
        self.assertEqual([line.strip() for line in done.stdout.splitlines()[1:]], [
            "-rw-r--r-- 0/0 /b", "-rwsr-x--- 0/0 /opt/a", "-rw------- 0/0 /opt/c", "-rw-r--r-- 0/0 /opt/d",
            "-rw------- 0/0 /opt/e", "drwxrwx--T 0/0 /opt/none/", "lrwxrwxrwx 0/0 /opt/relative ./../b"], done)

    def test_times_are_those_of_the_files_up_to_source_date_epoch(self):
        done = self.run_in_folder(
            "touch -d @1000000000 tree/b; touch -d @1500000000 tree/opt/*; list() { TZ=UTC tar -tvPzf update.gz; }; "
            "make >/dev/null; list | grep -c -e 2001-09-09.*/b -e 2017-07-14; "
            "SOURCE_DATE_EPOCH=1200000000 make >/dev/null; list | grep -c -e 2001-09-09.*/b -e 2008-01-10")[0]
        self.assertEqual(done.stdout, "4\n4\n")

    def test_check_reports_what_the_utility_shows(self):
        odd = {RECORD: (b"x=1\xff=2\r\nnone\ny=3", 0)}
        for update, pattern in [
                ({"product": "P\u202e\x1b[1mQ\x1bP\x7f", "version": "V\rW\x85\r", "description": ""},
                 r"Product: PQ\nVersion: V W\nDescription: \nWarning: .*empty\nContent: 1 members, 49 bytes .*\n"),
                ({"members": odd}, rf'Product: 1\ufffd\nWarning: .* second "=" .*\nVersion: \nWarning: .*empty\n'
                 rf"Description: 3\nWarning: .* UTF-8.*\nContent: 2 .*\nWarning: {RECORD} \(2 .*\n"),
                ({"record": b"version=1\nproduct=P\ndescription=D\n"},
                 'Product: 1\nWarning: .*"version" is shown as the product.*\nVersion: P\nWarning: .*"product".*\n'
                 "Description: D\nContent: 1 .*\n")]:
            # A check works even if no file can be written.
            said = self.run_in_folder("disk_with 0; check 2>&1", **update)[0].stdout
            self.assertRegex(said, rf"\A{pattern}\Z")

    def test_each_kind_of_risk_is_warned_of_and_counted(self):
        plain = ["opt/relative", "/usr/", "/opt/../etc/x", "//./etc/shadow", '/opt/li"\nnk/x', "/opt/well/known"]
        modes = {"/opt/setuid": 0o4755, "/opt/setgid": 0o2755, "/opt/open": 0o666, "/opt/group": 0o664,
                 RECORD + ".d": 0o6777}
        members = {name: (b"12345", 0o644) for name in plain} | {name: (b"", mode) for name, mode in modes.items()}
        members |= {'/opt/li"\nnk': ("/etc", "link"), "/opt/null": ("", "device")}
        said = self.run_in_folder("check", members=dict(sorted(members.items())))[0].stdout
        self.assertIn("Content: 14 members, ", said)
        warnings = [f"{name} ({count} in all): {text}" for name, count, text in [
            ("opt/relative", 1, "installed below"), ("/opt/../etc/x", 1, 'a ".."'),
            (r'/opt/li\"\nnk/x', 1, "installed through"), ("/usr", 1, "sets the mode"), ("/usr", 1, "replaces"),
            ("/etc/shadow", 2, "among"), ("/opt/null", 1, "a device"), ("/opt/setuid", 2, "setuid"),
            ("/opt/setgid", 2, "setgid"), ("/opt/group", 1, "every user of its group"),
            ("/opt/open", 2, "every user can")]]
        for warning in warnings:
            self.assertIn("Warning: " + warning, said)
        self.assertEqual(said.count("Warning"), len(warnings))

    def test_unsupported_attributes_are_refused_or_warned_of(self):
        done = self.run_in_folder("head -c 1234 /dev/zero >tree/a; ln tree/a tree/c; ln tree/a tree/opt/e; make")[0]
        self.assertRegex(done.stdout, r"hard links .*\(2 in all\), which take 2468 more bytes\n")
        if os.getuid() != 0:
            self.skipTest("needs root to change owners")
        done = self.run_in_folder("chown 12345 tree/b; chgrp 12345 tree/opt/a; setcap cap_chown+ep tree/opt/c; make")[0]
        self.assertRegex(done.stdout, r"owner .*\(2 in all\)\n.*capability .*\(1 in all\)\n")
        self.assert_stopped(2, "chown 12345 tree/b; chmod 4755 tree/b; make", "rights of root; .*tree/b")
        self.assert_stopped(2, "chgrp 12345 tree/opt/a; chmod 2755 tree/opt/a; make", "rights of root; .*opt/a")
