"""A program on a virtual desktop of its own, run as any user. Needs root."""
import contextlib
import json
import os
import pwd
import shutil
import signal
import socket
import subprocess
import tempfile
from pathlib import Path

from .wait import until
from .watch import Watcher

PATH = "/usr/local/bin:/usr/bin:/bin"
HERE = Path(__file__).parent


class Session:
    """Any request of driver.py's Driver is a method here as well."""

    def __init__(self, user, program, width=1280, height=1024, scale=1, path=PATH,
                 environment={}, prepare=lambda folder: None):
        self._user = pwd.getpwnam(user)
        self._program = Path(program).resolve()
        self._size, self._scale, self._path = f"{width}x{height}x24", scale, path
        self._environment = environment  # of the program, on top of the session's; None takes one away
        self._prepare = prepare  # what to do to the folder of the program's copy before the start
        self._link = self._last_words = None

    def __enter__(self):
        with contextlib.ExitStack() as undo:
            self._folder = Path(tempfile.mkdtemp(prefix="desktop-"))
            undo.callback(shutil.rmtree, self._folder)
            self._runtime = self._folder / "runtime"
            self._errors = self._runtime / "program.stderr"
            self._lay_out()
            self.display = self._start_server(undo)
            self._watcher = Watcher(self.display)
            undo.callback(self._watcher.close)
            manager = self._start(["openbox"])
            undo.callback(_end, manager)
            until(self._watcher.managed, 10, lambda: "the window manager does not start")
            environment = {"PATH": self._path, "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
                           "QT_SCALE_FACTOR": str(self._scale)} | self._environment
            # A socket of their own: the session's services share the driver's stdout and write to it.
            meeting = self._runtime / "driver.socket"
            with socket.create_server(str(meeting), family=socket.AF_UNIX) as listener:
                meeting.chmod(0o777)
                driver = self._start(
                    ["dbus-run-session", "--", "/usr/bin/python3", self._folder / "driver/driver.py", meeting,
                     str(self._scale), "/usr/bin/env",
                     *(f"{name}={value}" for name, value in environment.items() if value is not None),
                     self._folder / "bin" / self._program.name])
                undo.callback(self._end_driver, driver)
                listener.settimeout(15)
                try:
                    with listener.accept()[0] as link:
                        self._link = link.makefile("rw")
                except TimeoutError:
                    raise self._no_driver() from None
            self._undo = undo.pop_all()
        return self

    def __exit__(self, *_):
        self._undo.close()

    def __getattr__(self, verb):
        if verb.startswith("_"):
            raise AttributeError(verb)
        return lambda *arguments, **options: self._ask(verb, arguments, options)

    def until(self, condition, limit=15):
        """Waits for a condition of the test's own; a failure tells what was on the screen instead."""
        return until(condition, limit, lambda: f"never came true; on the screen: "
                     f"{ {title: self.texts(title) for title in self.windows()} }")

    def shown(self):
        """Titles of all windows that were on the screen so far, if only for a moment."""
        return self._watcher.shown()

    def bells(self):
        return self._watcher.bells()

    def asked_for_attention(self):
        """Titles of the windows that did, in that order."""
        return self._watcher.asked_for_attention()

    def come_between(self):
        self._watcher.come_between()

    def in_front(self):
        """The title of the window that has the keyboard, as the window manager says."""
        return self.hand("getactivewindow", "getwindowname").removesuffix("\n")

    def hand(self, *arguments, text=None):
        """xdotool on this display, for what the driver, which sees by accessibility, cannot do."""
        return subprocess.run(["xdotool", *map(str, arguments)], env={"DISPLAY": self.display, "PATH": PATH},
                              input=text, capture_output=True, text=True, timeout=60).stdout

    def key_until_gone(self, key):
        """Presses it again and again as long as the program has a window."""
        until(lambda: self.hand("key", key) or not self.hand("search", "--class", self._program.name), 30,
              lambda: f"{key} does not end the program")

    def end_display(self):
        self._server.kill()
        self._server.wait()

    def place(self, title):
        return self._watcher.place(title)

    def stderr(self):
        """What the program complained about; also readable when the session is over."""
        if self._last_words is not None:
            return self._last_words
        return self._errors.read_text(errors="replace")

    def screenshot(self, path, title=None):
        """A picture of the whole screen, or of the window of that title with its border."""
        window = "root" if title is None else str(self._watcher.frame(title))
        subprocess.run(["import", "-display", self.display, "-window", window, path], check=True, timeout=60)

    def _lay_out(self):
        """Copies all that the user runs: the originals may lie where only root can look."""
        self._folder.chmod(0o755)
        shutil.copytree(self._program.parent, self._folder / "bin")
        shutil.copytree(HERE, self._folder / "driver", ignore=shutil.ignore_patterns("__pycache__"))
        resources = self._program.parent.parent / "Resources"
        if resources.is_dir():
            shutil.copytree(resources, self._folder / "Resources")
        self._prepare(self._folder)
        for place, _, names in os.walk(self._folder):
            for copied in [place, *(os.path.join(place, name) for name in names)]:
                os.chmod(copied, 0o755)
        self._runtime.mkdir(0o700)
        self._errors.touch()
        for owned in (self._runtime, self._errors):
            os.chown(owned, self._user.pw_uid, self._user.pw_gid)

    def _start_server(self, undo):
        reading, writing = os.pipe()
        with open(reading) as number:
            self._server = subprocess.Popen(
                ["Xvfb", "-displayfd", str(writing), "-screen", "0", self._size, "-dpi", "96", "-ac",
                 "-nolisten", "tcp", "-noreset"], pass_fds=[writing], stderr=subprocess.DEVNULL)
            undo.callback(_end, self._server)
            os.close(writing)
            return ":" + number.readline().strip()

    def _start(self, command):
        # Root's real home is not for a test to write into.
        home = self._user.pw_dir if self._user.pw_uid else str(self._runtime)
        environment = {"HOME": home, "USER": self._user.pw_name, "LOGNAME": self._user.pw_name, "PATH": PATH,
                       "LANG": "C.UTF-8", "DISPLAY": self.display, "XDG_RUNTIME_DIR": str(self._runtime)}
        with open(self._folder / "desktop.log", "ab") as log:
            return subprocess.Popen(
                command, env=environment, cwd=home, start_new_session=True,
                stdin=subprocess.DEVNULL, stdout=log, stderr=log,
                user=self._user.pw_uid, group=self._user.pw_gid,
                extra_groups=os.getgrouplist(self._user.pw_name, self._user.pw_gid))

    def _ask(self, verb, arguments, options):
        try:
            print(json.dumps([verb, arguments, options]), file=self._link, flush=True)
            line = self._link.readline()
        except ConnectionError:
            line = ""
        if not line:
            raise self._no_driver()
        answer = json.loads(line)
        if "error" in answer:
            raise AssertionError(f"{verb}: {answer['error']}")
        return answer["value"]

    def _no_driver(self):
        return RuntimeError("no driver in the session: " + (self._folder / "desktop.log").read_text())

    def _end_driver(self, driver):
        family = []
        for pid in _descendants(driver.pid):
            with contextlib.suppress(ProcessLookupError):
                family.append(os.pidfd_open(pid))
        if self._link:  # the driver leaves by itself, and then its bus tidies up
            with contextlib.suppress(BrokenPipeError, subprocess.TimeoutExpired):
                self._link.close()
                driver.wait(5)
        _end(driver)
        for member in family:
            with contextlib.suppress(ProcessLookupError):
                signal.pidfd_send_signal(member, signal.SIGKILL)
            os.close(member)
        self._last_words = self.stderr()


def _end(process):
    process.terminate()
    try:
        process.wait(5)
    except subprocess.TimeoutExpired:
        process.kill()
        process.wait()


def _descendants(pid):
    children = {}
    for child in filter(str.isdigit, os.listdir("/proc")):
        with contextlib.suppress(FileNotFoundError, ProcessLookupError):
            parent = Path(f"/proc/{child}/stat").read_text().rpartition(")")[2].split()[1]
            children.setdefault(int(parent), []).append(int(child))
    below = children.get(pid, [])
    return below + [each for child in below for each in _descendants(child)]
