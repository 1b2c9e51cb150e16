import contextlib
import itertools
import os
import random
import re
import resource
import shutil
import signal
import stat
import threading
from concurrent.futures import ThreadPoolExecutor
from operator import methodcaller
from pathlib import Path
from secrets import token_hex

from archives import LIMIT, archives
from desktop.accounts import run
from desktop.updates import assert_installed
from desktop.utility import AUTHENTICATE, PASSWORD_FIELD, Utility
from base import LONG, PROGRAM, DesktopTest
from record import RECORD


class NeverCutOff(DesktopTest):
    def test_installation_finishes_however_the_utility_ends(self):
        count, cases = (100_000, 50) if LONG else (5_000, 3)
        members = self.members(**{str(number): (b"%d" % number, 0o644) for number in range(count)})
        path, account = self.update("many.gz", members=members), self.account()
        ways = {number.name: methodcaller("kill", number) for number in map(signal.Signals, (9, 1, 2, 6, 11, 15))}
        ways = {"display": methodcaller("end_display"), "close": self._close, **ways}
        for way, last in zip(list(ways) * cases, random.choices(list(members), k=cases)):
            with self.subTest(way, at=last):
                with self.running(account) as utility:
                    utility.install(path)
                    utility.until(Path(last).exists, 60)
                    ways[way](utility)
                    utility.await_all_processes()
                    if way == "display":
                        self.assertEqual(utility.exit_status(), 1)
                assert_installed(members)
                shutil.rmtree(self.folder / "installed")

    @staticmethod
    def _close(utility):
        utility.until(lambda: utility.xdotool("key", "alt+F4") or utility.poll() is not None)


class Killed(DesktopTest):
    def test_failure_is_reported_after_the_last_process_and_without_the_password(self):
        members = self.members(**{str(number): (b"%d" % number, 0o644) for number in range(30_000)})
        path, account = self.update("many.gz", members=members), self.account()
        for victim in "su", "sudo":
            with self.subTest(victim), self.running(account) as utility:
                utility.install(path)
                utility.until(Path(list(members)[100]).exists, 60)
                run(["pkill", "-KILL", "-x", "-U", str(account.uid), victim])
                texts = utility.dialog("OK", limit=60)
                assert_installed(members)
                self.assertNotIn(account.password, "".join(texts))
            shutil.rmtree(self.folder / "installed")


class Archives(DesktopTest):
    def test_check_of_any_archive_leaves_a_harmless_record(self):
        few = "setuid", "device", "folder", "after-link", "link", "large", "name-of-gigabytes", "one-line"
        names = {name: case for name, case in archives().items() if LONG or name.removesuffix(".gz") in few}
        for name, (_, data) in names.items():
            (self.folder / name).write_bytes(data)
        account = self.account()
        for user, password in (account.name, account.password), ("root", ""):
            with Utility(user, PROGRAM) as utility:
                utility.authenticate(user, password)
                for name, (texts, _) in names.items():
                    with self.subTest(name, user=user):
                        self.check(utility, self.folder / name, texts)

    def check(self, utility, path, texts):
        utility.fill("Patchfile:", str(path))
        if texts is None:
            utility.dialog("Cancel", "Keep")
            utility.answer("Cancel")
        else:
            utility.until(utility.can_update)
            self.assertEqual("|".join(utility.record()), texts)
            utility.fill("Patchfile:", "")
        if RECORD.exists():
            found = RECORD.lstat()
            self.assertEqual((stat.filemode(found.st_mode), found.st_uid, found.st_nlink), ("-rw-r--r--", 0, 1))
            self.assertLessEqual(found.st_size, LIMIT)


class Secrecy(DesktopTest):
    def test_command_lines_contain_the_password_only_during_a_credential_check(self):
        account, seen, end = self.account(), set(), threading.Event()
        path = self.update("update.gz", members=self.members(file=(b"new", 0o644)))
        password = account.password.encode()

        def look():  # without a pause, because some processes are short-lived
            while not end.is_set():
                for pid in filter(str.isdigit, os.listdir("/proc")):
                    with contextlib.suppress(OSError), open(f"/proc/{pid}/cmdline", "rb", 0) as file:
                        # A single read, because the process can execute another program between two reads.
                        if password in (words := file.read(1 << 20)):
                            seen.add(words.replace(password, b"***").replace(b"\0", b" ").decode(errors="replace"))

        looking = self.enterContext(ThreadPoolExecutor()).submit(look)
        self.addCleanup(end.set)
        with self.running(account) as utility:
            for _ in range(100 if LONG else 5):  # some processes are too short-lived to be seen every time
                utility.install(path)
                utility.outcome()
                utility.answer("Install Another")
        end.set()
        looking.result()
        check = f"su {account.name} -c echo *** | sudo -S /usr/bin/true "
        self.assertIn(check, seen, "the command of su is not seen")
        self.assertLessEqual(seen, {check, check.replace(f"su {account.name}", "bash")})


class Memory(DesktopTest):
    @staticmethod
    def private_memory(pid):
        """The private writable memory of a process, without its unreadable guard pages."""
        spans = re.findall(r"^(\w+)-(\w+) rw-p", Path(f"/proc/{pid}/maps").read_text(), re.M)
        content, size = bytearray(), resource.getpagesize()
        with open(f"/proc/{pid}/mem", "rb", 0) as memory:
            for page in itertools.chain.from_iterable(range(int(start, 16), int(end, 16), size) for start, end in spans):
                with contextlib.suppress(OSError):
                    content += os.pread(memory.fileno(), size, page)
        return content

    def test_holds_the_password_once(self):
        path = self.update("update.gz", members=self.members(file=(b"new", 0o644)))
        for password in [token_hex(20), token_hex(6), "it's $" + token_hex(8)] * (5 if LONG else 1):
            with self.running(self.account(password)) as utility:
                def count(when):
                    plain = [re.escape(password.encode(code)) for code in ("utf-8", "utf-16-le")]
                    # The undo history of a field has one entry per letter. The memory of the first entries is soon
                    # overwritten.
                    letters = b".{15}".join(re.escape(letter.encode()) for letter in password[6:])
                    try:
                        memory = self.private_memory(utility.pid())
                    except PermissionError:
                        self.skipTest("the memory is unreadable, as required; reading it takes CAP_SYS_PTRACE")
                    found = [len(re.findall(pattern, memory, re.DOTALL)) for pattern in (*plain, letters)]
                    self.assertEqual(found, [1, 0, 0], f"{len(password)} characters, {when}")
                count("authenticated")
                utility.set_text("Patchfile:", path)
                utility.until(utility.can_update)
                count("checked")
                utility.start()
                utility.outcome()
                count("installed")


class Secret(DesktopTest):
    def test_password_is_not_in_core_files_proc_clipboard_or_accessibility(self):
        account = self.account()
        home = Path("~" + account.name).expanduser()  # the working directory, where a core file would be
        self.addCleanup(resource.setrlimit, resource.RLIMIT_CORE, resource.getrlimit(resource.RLIMIT_CORE))
        resource.setrlimit(resource.RLIMIT_CORE, (resource.RLIM_INFINITY, resource.RLIM_INFINITY))
        for number in (signal.SIGSEGV, signal.SIGABRT) * (5 if LONG else 1):
            with Utility(account.name, PROGRAM) as utility:
                utility.window(AUTHENTICATE)
                utility.listen("object:text-changed")
                utility.fill(PASSWORD_FIELD, account.password)
                utility.key("ctrl+a", "ctrl+c", "ctrl+x")
                utility.fill("Name:", "")
                utility.key("ctrl+v", "x", "ctrl+a", "ctrl+c", "End", "ctrl+v")
                utility.until(lambda: utility.text("Name:").count("x") == 2)
                self.assertTrue(utility.text("Name:") == "xx", "the clipboard holds the password")
                told = "".join(text for _, text in utility.heard()) + utility.text(PASSWORD_FIELD)
                self.assertTrue("x" in told and account.password not in told, "told: nothing or the password")
                for file in "mem", "environ":
                    readable = {pid for pid in account.processes() if account.can_open(f"/proc/{pid}/{file}")}
                    self.assertTrue(readable)
                    self.assertNotIn(utility.pid(), readable, file)
                utility.kill(number)
                self.assertEqual((utility.exit_status(), list(home.glob("core*"))), (-number, []))
