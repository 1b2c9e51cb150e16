"""Walks at random through the whole program on a virtual desktop: walk.py PROGRAM SECONDS [SEED] (as root).
Fails if the program crashes, hangs or prints a report of a sanitizer. The seed determines the actions, but not their
timing."""
import contextlib
import random
import secrets
import sys
import tempfile
import time
from pathlib import Path

from desktop import signals
from desktop.accounts import Account
from desktop.updates import make_update
from desktop.utility import AUTHENTICATE, MAIN, Utility

KEYS = ("Tab Tab shift+Tab Return space Escape ctrl+a ctrl+c ctrl+v ctrl+x ctrl+z Delete BackSpace Home End Left Right "
        "Up Down Prior Next shift+Home shift+End ctrl+End F10 a g z slash").split()
MENUS = {"alt+e": range(1, 8), "alt+f": range(1, 3)}
ENDING = ["alt+F4"], ["ctrl+q"], ["ctrl+q", "ctrl+q"]
WINDOW = 488, 330  # pixels; a click beside a smaller window does no harm
LIFE = 60  # actions until the walk ends the program, so that it starts several times


class Walk:
    """The public methods are the actions."""

    def __init__(self, utility, account, files, request, dice):
        self._utility, self._account, self._files, self._dice = utility, account, files, dice
        self._request = request  # see DropAndClose.cpp

    def key(self):
        self._utility.xdotool("key", *self._dice.choices(KEYS, k=self._dice.randint(1, 12)))

    def hold(self):
        key = self._dice.choice(KEYS[3:6])
        self._utility.xdotool("keydown", key, "sleep", self._dice.random() * 2, "keyup", key)

    def click(self):
        self._utility.xdotool(*self._move(), "click", self._dice.choice((1, 1, 1, 1, 1, 1, 3)))

    def edit(self):
        self._check_main_window()
        self._utility.click(self._dice.choice(("Patchfile:", "Description")))
        self._utility.xdotool("key", "ctrl+a", self._dice.choice(KEYS[6:11]))

    def select(self):
        self._utility.xdotool(*self._move(), "mousedown", 1, *self._move(), "mouseup", 1)

    def menu(self):
        menu = self._dice.choice(list(MENUS))
        self._utility.xdotool("key", menu, *["Down"] * self._dice.choice(MENUS[menu]), "Return")

    def choose(self):
        self._check_main_window()
        self._utility.fill("Patchfile:", self._dice.choice(self._files))

    def press(self):
        self._utility.click(self._dice.choice(self._utility.buttons(self._utility.windows()[0])))

    def drop(self):
        self._check_main_window()
        self._utility.drop(self._dice.choice(self._files), "Patchfile:")

    def drop_and_close(self):
        self._request.touch()

    def end(self):
        self._utility.xdotool("key", *self._dice.choice(ENDING))

    def authenticate(self):
        self._utility.authenticate(self._account.name, self._account.password)

    def step(self):
        """Takes an action. Returns its name."""
        weights = {"key": 20, "click": 10, "press": 8, "menu": 6, "hold": 1, "select": 4, "edit": 20, "choose": 8,
                   "drop": 1, "end": 1}
        return self.attempt(*self._dice.choices(list(weights), weights.values()))

    def attempt(self, name):
        with contextlib.suppress(AssertionError, IndexError, TimeoutError):  # no such control now
            getattr(self, name)()
        return name

    def hangs(self):
        try:
            self._utility.windows()
        except AssertionError:
            return self._utility.poll() is None
        return False

    def _check_main_window(self):
        assert self._utility.windows()[:1] == [MAIN] and "Update" in self._utility.buttons(MAIN), "a dialog is open"

    def _move(self):
        return ("getactivewindow", "mousemove", "--window", "%1", *(self._dice.randrange(size) for size in WINDOW))


def walk(program, account, files, dice, end):
    """Walks until the program or the time has ended."""
    names, request = [], Path("~" + account.name, "drop").expanduser()
    environment = {"ASAN_OPTIONS": "detect_leaks=0",  # libdbus has leaks if the program ends early
                   "QT_PLUGIN_PATH": str(Path(program).resolve().parent), "QT_QPA_GENERIC_PLUGINS": "drop-and-close",
                   "ZELTO_DROP": str(request)}
    with Utility(account.name, program, environment=environment) as utility:
        utility.window(AUTHENTICATE, 60)
        way = Walk(utility, account, files, request, dice)
        if dice.random() < 0.9:
            names += [way.attempt("authenticate"), way.attempt("choose")]
        while time.monotonic() < end and utility.poll() is None:
            names += [way.step() for _ in range(8)]
            if way.hangs():
                sys.exit(f"walk: no answer after {' '.join(names)}")
            if len(names) > LIFE:
                names.append(way.attempt("drop_and_close"))
        if utility.poll():
            sys.exit(f"walk: exit status {utility.poll()} after {' '.join(names)}\n{utility.log()}")
    return len(names)


def main(program, seconds, seed=None):
    seed = seed or secrets.token_hex(4)
    print(f"walk: seed {seed}", flush=True)
    dice, end, steps = random.Random(seed), time.monotonic() + float(seconds), 0
    with tempfile.TemporaryDirectory() as folder, Account(secrets.token_hex(8)) as account:
        Path(folder).chmod(0o755)
        good, long, bad = (f"{folder}/{name}.tar.gz" for name in ("good", "long", "bad"))
        make_update(good, members={f"{folder}/installed": (b"new", 0o644)})
        make_update(long, description="x" * 50_000, members={f"{folder}/{n}": (b"", 0o644) for n in range(20_000)})
        Path(bad).write_bytes(Path(long).read_bytes()[:5000])
        files = good, good, good, long, bad
        while time.monotonic() < end:
            steps += walk(program, account, files, dice, end)
        Path("/tmp/.KVX.Content").unlink(missing_ok=True)
    print(f"walk: {steps} actions")


if __name__ == "__main__":
    signals.clean_up_on_signals()
    main(*sys.argv[1:])
