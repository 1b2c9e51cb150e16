import contextlib
import os
import threading

from base import LONG, DesktopTest


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

        looking = threading.Thread(target=look)
        looking.start()
        self.addCleanup(looking.join)
        self.addCleanup(end.set)
        with self.running(account) as utility:
            for _ in range(100 if LONG else 5):  # some processes are too short-lived to be seen every time
                utility.install(path)
                utility.outcome()
                utility.answer("Install Another")
        self.assertTrue(looking.is_alive())
        end.set()
        looking.join()
        check = f"su {account.name} -c echo *** | sudo -S /usr/bin/true "
        self.assertIn(check, seen, "the command of su is not seen")
        self.assertLessEqual(seen, {check, check.replace(f"su {account.name}", "bash")})
