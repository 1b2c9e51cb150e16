import contextlib
import ctypes
import os
import pty
import pwd
import signal
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from desktop.display import Desktop
from desktop.wait import until
from base import PROGRAM, DesktopTest

PR_SET_CHILD_SUBREAPER = 36


class WithoutDisplay(unittest.TestCase):
    def test_start_fails_with_one_line(self):
        for display in {}, {"DISPLAY": ":9987"}:
            environment = {"PATH": os.environ["PATH"], **display}
            done = subprocess.run([PROGRAM], env=environment, timeout=30,
                                  stdin=subprocess.DEVNULL, capture_output=True, text=True)
            self.assertEqual((done.returncode, done.stdout), (1, ""))
            self.assertRegex(done.stderr, r"\Azelto-update-utility: no display can be opened: .+\n\Z")


class Stranger(DesktopTest):
    def test_display_accepts_only_its_user(self):
        owner, stranger = self.account(), self.account(sudo=False)
        with Desktop(owner.name, PROGRAM) as desktop:
            name, cookie = (desktop.variables[key] for key in ("DISPLAY", "XAUTHORITY"))
            for account, may in (owner, True), (stranger, False):
                self.assertEqual(account.can_open(cookie), may)
                done = subprocess.run(["runuser", "-u", account.name, "--", "env", f"DISPLAY={name}",
                                       f"XAUTHORITY={cookie}", "xdotool", "getmouselocation"], capture_output=True)
                self.assertEqual(done.returncode == 0, may, done.stderr)


class Ended(DesktopTest):
    USES_RECORD = False  # but the test that it starts does
    TEST = ["ctest", "--test-dir", Path(PROGRAM).resolve().parents[1], "-V", "-R", "desktop.test_update.Install"]

    def traces(self):
        """What a demonstration or a test leaves behind if it does not clean up, apart from its processes."""
        folders = Path(tempfile.gettempdir()).glob("desktop-*"), Path(tempfile.gettempdir()).glob("zelto-*")
        return {user.pw_name for user in pwd.getpwall()}.union(*folders)

    def test_signal_or_closed_terminal_leaves_nothing(self):
        ctypes.CDLL(None).prctl(PR_SET_CHILD_SUBREAPER, 1)  # orphans become children of this process
        before, demo = self.traces(), [sys.executable, "-B", "-m", "desktop.demo", PROGRAM, self.folder]
        for command, line, end in [(demo, "main window", signal.SIGTERM), (demo, "update file chosen", signal.SIGINT),
                                   (demo, "authenticating", signal.SIGHUP), (demo, "update installed", None),
                                   (self.TEST, "Start", signal.SIGTERM), (self.TEST, "Start", None)]:
            with self.subTest(command=command[0], end=end):
                pid, terminal = pty.fork()
                if pid == 0:
                    os.execvp(command[0], command)
                output = open(terminal, "rb", 0)
                text = b""
                while line.encode() not in text:
                    text += output.read(4096)
                until(lambda: self.traces() != before, 10, lambda: "nothing has started")
                if end:
                    os.kill(pid, end)
                    with contextlib.suppress(OSError):  # raised when no process has the terminal
                        while output.read(4096):
                            pass
                output.close()
                with contextlib.suppress(ChildProcessError):  # raised when no child is left
                    until(lambda: os.waitpid(-1, os.WNOHANG) and False, 60, lambda: "a process is left")
                self.assertEqual(self.traces(), before)
