"""A private virtual desktop for one user. Needs root."""
import contextlib
import os
import pwd
import secrets
import shutil
import socket
import struct
import subprocess
import tempfile
from pathlib import Path

from . import signals
from .wait import until

PATH = "/usr/local/bin:/usr/bin:/bin"
FAMILY_LOCAL = 256


class Desktop:
    """A display with a window manager, and a copy of the program's folder that the user can read."""

    def __init__(self, user, program, width=1280, height=1024):
        self._user = pwd.getpwnam(user)
        self._program = Path(program).resolve()
        self._size = f"{width}x{height}x24"

    def __enter__(self):
        with contextlib.ExitStack() as undo:
            self._start(undo)
            self._undo = undo.pop_all()
        return self

    def __exit__(self, *_):
        with signals.delayed():
            self._undo.close()

    def _start(self, undo):
        self._folder = Path(tempfile.mkdtemp(prefix="desktop-"))
        undo.callback(shutil.rmtree, self._folder)
        self._runtime = self._folder / "runtime"
        self._lay_out()
        cookie = self._new_cookie()
        self.variables = {"DISPLAY": self._start_server(cookie, undo), "XAUTHORITY": str(cookie)}
        self._start_manager(undo)

    def _start_manager(self, undo):
        ready = self._runtime / "manages-windows"
        undo.callback(end, self.launch(["openbox", "--startup", f"touch {ready}"]))
        until(ready.exists, 10, lambda: "the window manager does not start")

    def launch(self, command, **streams):
        """Starts a command as the user. Output for which no stream is given goes to the desktop's log."""
        # A test must not write to root's real home.
        home = self._user.pw_dir if self._user.pw_uid else str(self._runtime)
        environment = {"HOME": home, "USER": self._user.pw_name, "LOGNAME": self._user.pw_name, "PATH": PATH,
                       "LANG": "C.UTF-8", "NO_AT_BRIDGE": "1",  # the driver could have to wait for other programs
                       "XDG_RUNTIME_DIR": str(self._runtime), **self.variables,
                       "DBUS_SESSION_BUS_ADDRESS": "disabled:"}  # else a program starts a bus that outlives it
        with open(self._folder / "desktop.log", "ab") as log:
            streams = {"stdin": subprocess.DEVNULL, "stdout": log, "stderr": log} | streams
            return subprocess.Popen(
                command, env=environment, cwd=home, start_new_session=True, **streams,
                user=self._user.pw_uid, group=self._user.pw_gid,
                extra_groups=os.getgrouplist(self._user.pw_name, self._user.pw_gid))

    def copy_of(self, name):
        """The path of the copy of a program."""
        return self._folder / "bin" / name

    def xdotool(self, *arguments, text=None):
        """Uses the mouse, the keyboard or windows of the display."""
        return self._run(["xdotool", *map(str, arguments)], text).stdout

    def end_display(self):
        self._server.kill()
        self._server.wait()

    def screenshot(self, path, title=None):
        """Saves a picture of the window with the title, or of all windows without the empty screen around them."""
        window = [title] if title else ["root", "-trim", "+repage"]
        self._run(["import", "-window", *window, path]).check_returncode()

    def _run(self, command, text=None):
        return subprocess.run(command, env={"PATH": PATH, **self.variables}, input=text, text=True, capture_output=True,
                              timeout=60)

    def _lay_out(self):
        """Copies the programs for the user, because the originals can be in a folder that only root can enter."""
        shutil.copytree(Path(__file__).parent, self._folder / "driver", ignore=shutil.ignore_patterns("__pycache__"))
        for name in "bin", "Resources", "libexec":
            if (folder := self._program.parent.parent / name).is_dir():
                shutil.copytree(folder, self._folder / name)
        subprocess.run(["chmod", "-R", "755", self._folder], check=True)
        self._runtime.mkdir(0o700)
        os.chown(self._runtime, self._user.pw_uid, self._user.pw_gid)

    def _new_cookie(self):
        """Makes the file with the secret that a client of the display needs. Only its user can read it."""
        path = self._runtime / "cookie"
        path.touch(0o600)
        fields = socket.gethostname().encode(), b"", b"MIT-MAGIC-COOKIE-1", secrets.token_bytes(16)
        path.write_bytes(struct.pack(">H", FAMILY_LOCAL)
                         + b"".join(struct.pack(">H", len(field)) + field for field in fields))
        os.chown(path, self._user.pw_uid, self._user.pw_gid)
        return path

    def _start_server(self, cookie, undo):
        reading, writing = os.pipe()
        with open(reading) as number:
            self._server = subprocess.Popen(
                ["Xvfb", "-displayfd", str(writing), "-screen", "0", self._size, "-dpi", "96", "-auth",
                 cookie, "-nolisten", "tcp", "-noreset"], pass_fds=[writing], stderr=subprocess.DEVNULL,
                start_new_session=True)
            undo.callback(end, self._server)
            os.close(writing)
            return ":" + number.readline().strip()


def end(process):
    process.terminate()
    try:
        process.wait(5)
    except subprocess.TimeoutExpired:
        process.kill()
        process.wait()
