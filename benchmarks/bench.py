"""Measures what a user or an administrator notices: bench.py PROGRAM [EARLIER] (as root). Compares each figure with the
minimal cost of the work, or with EARLIER, another build of the program."""
import contextlib
import datetime
import os
import platform
import pwd
import secrets
import select
import shutil
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

import psutil
from Xlib import X, display
from Xlib.protocol import event

TOOLS = Path(__file__).resolve().parent.parent / "tools"
sys.path.insert(0, str(TOOLS))
from desktop import signals
from desktop.accounts import Account
from desktop.display import PATH, Desktop, end
from desktop.utility import AUTHENTICATE, MAIN, PASSWORD_FIELD, Utility
from desktop.wait import until

ROUNDS = 9
LIMIT = 60  # seconds
MEMORY_DISK = "/dev/shm"
RECORD = "/tmp/.KVX.Content"


def machine():
    processor = next(line.split(": ")[1].strip() for line in open("/proc/cpuinfo") if line.startswith("model name"))
    return (f"{datetime.date.today():%-d %B %Y} with {os.cpu_count()} cores of {processor}, "
            f"{psutil.virtual_memory().total / 2**30:.0f} GiB, {platform.freedesktop_os_release()['PRETTY_NAME']}, "
            f"load {os.getloadavg()[0]:.1f}")


def compare(work, reference, ours, theirs, rounds=ROUNDS, unit="ms"):
    """Prints a row. Each round takes both figures, in alternating order, so that other load affects both."""
    pairs = []
    for turn in range(rounds):
        figures = {measure: measure() for measure in ((ours, theirs) if turn % 2 else (theirs, ours))}
        pairs.append((figures[ours], figures[theirs]))
    mine, other = (statistics.median(column) for column in zip(*pairs))
    low, middle, high = statistics.quantiles((one / two for one, two in pairs), n=4)
    print(f"| {work} | {mine:,.1f} {unit} | {reference}: {other:,.1f} {unit} | {middle:.2f} ± {(high - low) / 2:.2f} "
          f"| {rounds} |", flush=True)


def milliseconds(action):
    start = time.perf_counter()
    action()
    return 1000 * (time.perf_counter() - start)


class Watch:
    """Waits for windows by the events of a display."""

    def __init__(self, variables):
        os.environ["XAUTHORITY"] = variables["XAUTHORITY"]  # the library has no parameter for it
        self._display = display.Display(variables["DISPLAY"])
        self._root = self._display.screen().root
        # Changes of the root window's properties, and the replies to pings, which clients send to it.
        self._root.change_attributes(event_mask=X.PropertyChangeMask | X.StructureNotifyMask)
        self._display.sync()

    def time_to_window(self, action):
        """Milliseconds until another window is active and has answered a ping. Its event loop answers after all earlier
        events, including the first paint."""
        previous = self._active()

        def wait():
            action()
            while (window := self._active()) in (None, previous):
                self._next_event()
            self._ping(window)
        return milliseconds(wait)

    def has_window(self):
        return bool(self._property("_NET_CLIENT_LIST"))

    def _active(self):
        clients = self._property("_NET_CLIENT_LIST")
        return next((window for window in self._property("_NET_ACTIVE_WINDOW") if window in clients), None)

    def _ping(self, number):
        protocols, ping = map(self._display.intern_atom, ("WM_PROTOCOLS", "_NET_WM_PING"))
        window = self._display.create_resource_object("window", number)
        window.send_event(event.ClientMessage(window=window, client_type=protocols,
                                              data=(32, [ping, X.CurrentTime, number, 0, 0])))
        self._display.flush()
        while (answer := self._next_event()).type != X.ClientMessage or answer.client_type != protocols:
            pass

    def _property(self, name):
        found = self._root.get_full_property(self._display.intern_atom(name), X.AnyPropertyType)
        return found.value if found else ()

    def _next_event(self):
        if not self._display.pending_events() and not select.select([self._display], [], [], LIMIT)[0]:
            raise TimeoutError("no window")
        return self._display.next_event()


def peak(pid):
    """The peak memory in MiB."""
    with open(f"/proc/{pid}/status") as status:
        return next(int(line.split()[1]) for line in status if line.startswith("VmHWM:")) / 1024


class Start:
    """Starts a program on a desktop without other services."""

    def __init__(self, desktop, program):
        self._desktop, self._command = desktop, [desktop.copy_of(program.name)]
        self._watch = Watch(desktop.variables)
        self.duration()  # loads the program from the disk into the cache

    def duration(self):
        return self._run()[0]

    def memory(self):
        return self._run()[1]

    def _run(self):
        started = []
        duration = self._watch.time_to_window(lambda: started.append(self._desktop.launch(self._command)))
        memory = peak(started[0].pid)
        end(started[0])
        until(lambda: not self._watch.has_window(), 10, lambda: "the window stays")
        return duration, memory


class User(Utility):
    """The utility and its user, who has authenticated and chosen the path field."""

    def __init__(self, account, program):
        super().__init__(account.name, program)
        self._account = account

    def __enter__(self):
        super().__enter__()
        self._watch = Watch(self.variables)
        self.window(AUTHENTICATE)
        self.fill("Name:", self._account.name)
        self.fill(PASSWORD_FIELD, self._account.password)
        self._authentication = self._after_return()
        self.window(MAIN)
        self.click("Patchfile:")
        return self

    def authentication(self):
        with User(self._account, self._program) as again:
            return again._authentication

    def memory(self, path=None):
        """The peak memory of a new start, or after the installation of the file."""
        with User(self._account, self._program) as again:
            if path:
                again.installation(path)
            return peak(again.pid())

    def check(self, path):
        self.set_text("Patchfile:", "")
        duration = milliseconds(lambda: self.set_text("Patchfile:", str(path)))  # returns with the program's handler
        assert self.can_update(), f"{path} is refused"
        return duration

    def installation(self, path):
        return self._install(path, "Install Another")

    def failure(self, path):
        return self._install(path, "OK")

    def _install(self, path, answer):
        self.check(path)
        duration = self._after_return()
        self.answer(answer)
        return duration

    def _after_return(self):
        return self._watch.time_to_window(lambda: self.xdotool("key", "Return"))


class Commands:
    """The commands of the utility, run by sh."""

    def __init__(self, account):
        self._account, user = account, pwd.getpwnam(account.name)
        self._identity = {"user": user.pw_uid, "group": user.pw_gid,
                          "extra_groups": os.getgrouplist(user.pw_name, user.pw_gid)}

    def authentication(self):
        return self._time("sudo -K", self._as_root("/usr/bin/true"))

    def check(self, path):
        return self._time(*map(self._as_root, ("/usr/bin/true", f"tar -zxPvf {path} {RECORD}", f"cat {RECORD}")))

    def installation(self, path, status=0):
        return self._time("sudo -K", *map(self._as_root, ("/usr/bin/true", f"tar -zxPvf {path}")), status=status)

    def failure(self, path):
        return self.installation(path, status=2)

    def _as_root(self, command):
        echo = f"echo {self._account.password}"
        return f"{echo} | su {self._account.name} -c '{echo} | sudo -S {command}'"

    def _time(self, *lines, status=0):
        def run():
            done = subprocess.run(["sh"], input="\n".join(lines).encode(), stdout=output, stderr=output, cwd="/",
                                  env={"PATH": PATH}, **self._identity)
            assert done.returncode == status, f"exit status {done.returncode}"
        with tempfile.TemporaryFile(dir=MEMORY_DISK) as output:
            return milliseconds(run)


class Updates:
    """Trees and update files in memory, because a disk would dominate the figures."""

    def __init__(self, folder):
        self._folder, self.target = folder, folder / "target"
        block = os.urandom(1 << 20)  # larger than the window of gzip, so the repetitions do not compress
        self._add("small", {name: name.encode() * 100 for name in "abcde"})
        self._add("large", {name: block * 13 for name in "abcd"})
        self._add("many", {f"{number // 1000}/file-{number}": b"A file of an update.\n" * 20
                           for number in range(100_000)})

    def path(self, name):
        return self._folder / f"{name}.tar.gz"

    def clear(self):
        shutil.rmtree(self.target, ignore_errors=True)

    def make(self, name):
        return self._run(TOOLS / "zelto-make-update", "--product=Sample", "--version=1", "--description=Files.",
                         self._folder / name, self.path(name))

    def make_archive(self, name):
        return self._run("sh", "-c", 'tar -cC "$0" . | gzip -n >"$1"', self._folder / name, self._folder / "archive")

    def _add(self, name, files):
        for file, content in files.items():
            path = Path(f"{self._folder / name}{self.target}", file)
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(content)
        self.make(name)

    @staticmethod
    def _run(*command):
        return milliseconds(lambda: subprocess.run(command, check=True, stdout=subprocess.DEVNULL))


def measure_start(undo, account, programs, reference):
    ours, theirs = (Start(undo.enter_context(Desktop(account.name, each)), each) for each in programs)
    compare("start until the dialog accepts keys", reference, ours.duration, theirs.duration, rounds=4 * ROUNDS)
    compare("peak memory at the start", reference, ours.memory, theirs.memory, unit="MiB")


def measure_work(ours, theirs, reference, updates):
    def compare_each(work, name, verb):
        def measure(side):
            updates.clear()
            return getattr(side, verb)(updates.path(name))
        compare(work, reference, lambda: measure(ours), lambda: measure(theirs))

    compare("authentication until the main window shows", reference, ours.authentication, theirs.authentication)
    compare_each("check of a small file", "small", "check")
    compare_each("check of 52 MB", "large", "check")
    compare_each("installation of 5 files", "small", "installation")
    compare_each("installation of 52 MB", "large", "installation")
    compare_each("installation of 100,000 files", "many", "installation")


def measure_failure(ours, theirs, reference, updates):
    updates.clear()
    updates.target.touch()  # the directory of the files
    compare("failed installation with 14 MB of messages", reference,
            *(lambda side=side: side.failure(updates.path("many")) for side in (ours, theirs)), rounds=5)
    updates.target.unlink()


def measure_making(updates):
    for name, files in ("large", "52 MB"), ("many", "100,000 files"):
        compare(f"making an update of {files}", "tar and gzip", lambda: updates.make(name),
                lambda: updates.make_archive(name), rounds=5)


def main(program, earlier=None):
    signals.clean_up_on_signals()
    os.umask(0o022)
    program, earlier = Path(program).resolve(), earlier and Path(earlier).resolve()
    print(f"Measured on {machine()}.\n\n| Work | Utility | Compared with | Ratio | Rounds |\n|---|---|---|---|---|")
    with contextlib.ExitStack() as undo:
        folder = Path(undo.enter_context(tempfile.TemporaryDirectory(dir=MEMORY_DISK, prefix="zelto-bench-")))
        folder.chmod(0o755)
        undo.callback(Path(RECORD).unlink, missing_ok=True)
        updates, account = Updates(folder), undo.enter_context(Account(secrets.token_hex(8)))
        measure_start(undo, account, (program, earlier or program.with_name("bench-smallest")),
                      "earlier build" if earlier else "smallest Qt program")
        ours = undo.enter_context(User(account, program))
        theirs, reference = Commands(account), "commands in sh"
        if earlier:
            theirs, reference = undo.enter_context(User(account, earlier)), "earlier build"
        measure_work(ours, theirs, reference, updates)
        measure_failure(ours, theirs, reference, updates)
        compare("peak memory after 100,000 files", "before them", lambda: ours.memory(updates.path("many")),
                ours.memory, rounds=3, unit="MiB")
        measure_making(updates)


if __name__ == "__main__":
    main(*sys.argv[1:])
