"""A program on a private virtual desktop, run as any user and driven by requests. Needs root."""
import contextlib
import json
import select
import socket
import subprocess

import psutil

from .display import PATH, Desktop, end
from .wait import until


class Session(Desktop):
    """Sends each call of a method that this class lacks to the Driver of driver.py, as a request."""

    def __init__(self, user, program, scale=1, environment={}, **desktop):
        super().__init__(user, program, **desktop)
        self._scale = scale
        self._environment = environment  # additional variables of the program
        self._compositor = []  # a command that starts one on the session's bus and then its arguments

    def _start(self, undo):
        super()._start(undo)
        environment = {"PATH": PATH, "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
                       "QT_SCALE_FACTOR": str(self._scale)} | self._environment
        # A socket, because the session's services also write to the driver's stdout.
        near, far = socket.socketpair()
        with near, far:
            self._driver = self.launch(
                ["dbus-run-session", "--", *self._compositor, "/usr/bin/python3", "-X", "faulthandler",
                 self._folder / "driver/driver.py", str(far.fileno()), str(self._scale), "/usr/bin/env",
                 *(f"{name}={value}" for name, value in environment.items()),
                 self.copy_of(self._program.name)], pass_fds=[far.fileno()])
            self._link = near.makefile("rw")
        undo.callback(self._end_driver)

    def __getattr__(self, verb):
        if verb.startswith("_"):
            raise AttributeError(verb)
        return lambda *arguments: self._ask(verb, arguments)

    def click(self, name):
        self.xdotool("mousemove", *self.centre(name), "click", 1)

    def key(self, *keys):
        self.await_keyboard()
        self.xdotool("key", "--clearmodifiers", *keys)

    def type(self, text):
        self.await_keyboard()
        # On standard input, because other processes can read arguments.
        self.xdotool("type", "--clearmodifiers", "--delay", 10, "--file", "-", text=text)

    def drop(self, path, name):
        """Drags the file from another program's window to the control and drops it once it is accepted."""
        x, y = self.centre(name)
        with self.launch(["/usr/bin/python3", self._folder / "driver/drag_source.py", path],
                         stdout=subprocess.PIPE) as source:
            try:
                source.stdout.readline()  # the window shows
                self.xdotool("mousemove", 32, 32, "mousedown", 1)
                for step in range(1, 31):
                    self.xdotool("mousemove", 32 + (x - 32) * step // 30, 32 + (y - 32) * step // 30)
                # A source reports no move until the target has answered the previous report.
                self.until(lambda: self.xdotool("mousemove", x + 1, y, "mousemove", x, y)
                           or select.select([source.stdout], [], [], 0)[0])
                self.xdotool("mouseup", 1)
                self.until(lambda: source.poll() is not None)
            finally:
                source.kill()

    def until(self, condition, limit=15):
        """Waits for a condition. A failure reports the texts on the screen."""
        return until(condition, limit, lambda: f"the condition was not met; {self.screen()}")

    def log(self):
        """What the programs of the session have printed."""
        return (self._folder / "desktop.log").read_text(errors="replace")

    def _ask(self, verb, arguments):
        try:
            print(json.dumps([verb, arguments]), file=self._link, flush=True)
            line = self._link.readline()
        except ConnectionError:
            line = ""
        if not line:
            with contextlib.suppress(subprocess.TimeoutExpired):
                self._driver.wait(5)
            raise RuntimeError(f"no driver in the session (exit status {self._driver.returncode}): {self.log()}")
        answer = json.loads(line)
        if "error" in answer:
            raise AssertionError(f"{verb}: {answer['error']}")
        return answer["value"]

    def _end_driver(self):
        started = [] if self._driver.poll() is not None else psutil.Process(self._driver.pid).children(recursive=True)
        with contextlib.suppress(BrokenPipeError, subprocess.TimeoutExpired):
            self._link.close()  # ends the driver, and then its bus
            self._driver.wait(5)
        end(self._driver)
        for process in started:
            with contextlib.suppress(psutil.NoSuchProcess):
                process.kill()
