"""Walks at random through the whole program on a virtual desktop: walk.py PROGRAM SECONDS [SEED] (as root).
Fails if the program crashes, hangs or prints a report of a sanitizer. The seed determines the actions, but not their
timing."""
import contextlib
import random
import secrets
import sys
import time
from pathlib import Path

from desktop import signals
from desktop.accounts import Account
from desktop.updates import make_update, shared_folder
from desktop.utility import AUTHENTICATE, MAIN, Utility

KEYS = ("Tab Tab shift+Tab Return space Escape ctrl+a ctrl+c ctrl+v ctrl+x ctrl+z Delete BackSpace Home End Left Right "
        "Up Down Prior Next shift+Home shift+End ctrl+End F10 a g z slash").split()
MENUS = {"alt+e": range(1, 8), "alt+f": range(1, 3)}
ENDING = ["alt+F4"], ["ctrl+q"], ["ctrl+q", "ctrl+q"]
WEIGHTS = {"key": 20, "click": 10, "press": 8, "menu": 6, "hold": 1, "select": 4, "edit": 20, "choose": 8, "drop": 1,
           "end": 1}
WINDOW = 488, 330  # pixels; a click beside a smaller window does no harm
LIFE = 60  # actions until the walk ends the program, so that it starts several times


class Walk:
    def __init__(self, utility, account, files, request, dice):
        self._utility, self._dice = utility, dice
        pick, xdotool = dice.choice, utility.xdotool
        self._actions = {
            "key": lambda: xdotool("key", *dice.choices(KEYS, k=dice.randint(1, 12))),
            "hold": lambda: xdotool("keydown", key := pick(KEYS[3:6]), "sleep", dice.random() * 2, "keyup", key),
            "click": lambda: xdotool(*self._move(), "click", pick((1, 1, 1, 1, 1, 1, 3))),
            "select": lambda: xdotool(*self._move(), "mousedown", 1, *self._move(), "mouseup", 1),
            "menu": lambda: xdotool("key", menu := pick(list(MENUS)), *["Down"] * pick(MENUS[menu]), "Return"),
            "end": lambda: xdotool("key", *pick(ENDING)),
            "press": lambda: utility.click(pick(utility.buttons(utility.windows()[0]))),
            "edit": lambda: self._in_main_window(self._edit),
            "choose": lambda: self._in_main_window(lambda: utility.fill("Patchfile:", pick(files))),
            "drop": lambda: self._in_main_window(lambda: utility.drop(pick(files), "Patchfile:")),
            "drop_and_close": request.touch,  # see DropAndClose.cpp
            "authenticate": lambda: utility.authenticate(account.name, account.password)}

    def step(self):
        """Takes an action. Returns its name."""
        return self.attempt(*self._dice.choices(list(WEIGHTS), WEIGHTS.values()))

    def attempt(self, name):
        with contextlib.suppress(AssertionError, IndexError, TimeoutError):  # no such control now
            self._actions[name]()
        return name

    def hangs(self):
        try:
            self._utility.windows()
        except AssertionError:
            return self._utility.poll() is None
        return False

    def _in_main_window(self, action):
        if self._utility.windows()[:1] == [MAIN] and "Update" in self._utility.buttons(MAIN):  # no dialog is open
            action()

    def _edit(self):
        self._utility.click(self._dice.choice(("Patchfile:", "Description")))
        self._utility.xdotool("key", "ctrl+a", self._dice.choice(KEYS[6:11]))

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
    with shared_folder() as folder, Account() as account:
        good, long, bad = (str(folder / f"{name}.tar.gz") for name in ("good", "long", "bad"))
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
