"""Saves a picture of every window and dialog, light and dark, at scales 1 and 2, or on another desktop:
/usr/bin/python3 pictures.py PROGRAM PICTURES_DIR [gnome|kwin] (as root). Creates the account "anna"."""
import itertools
import shutil
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent))
from desktop import demo, signals
from desktop.accounts import Account
from desktop.nested import NestedUtility
from desktop.updates import make_update
from desktop.utility import MAIN, Utility

DARK = {"Window": "42,46,50", "View": "27,30,32", "Button": "49,54,59", "Selection": "61,174,233"}
DARK_GNOME = """[org/gnome/desktop/interface]
color-scheme='prefer-dark'
"""
HOME = Path("/home/anna")
UPDATE, CUT = HOME / "Downloads/zelto-core-4.2.tar.gz", HOME / "Downloads/cut.tar.gz"
TEXTS = "ZELTO Core Services", "4.2", "Faster start, and a fix for reports that stayed in the queue."
# Enough files that the installation lasts until its picture is taken.
MEMBERS = {f"{HOME}/installed/{number}": (b"x" * 2000, 0o644) for number in range(40_000)}
# Qt reads the colours of a KDE desktop from the file kdeglobals.
THEMES = {"light": {}, "dark": {"XDG_CURRENT_DESKTOP": "KDE", "KDE_SESSION_VERSION": "5",
                                "XDG_CONFIG_HOME": f"{HOME}/.dark"}}


def main(program, pictures, shell=None):
    pictures = Path(pictures)
    shutil.rmtree(pictures, ignore_errors=True)
    pictures.mkdir(parents=True)
    with Account(name="anna") as account:
        make_files()
        for theme, scale in itertools.product(THEMES, (1,) if shell else (1, 2)):
            with session(account.name, program, shell, theme, scale) as utility:
                show(utility, account, demo.camera(utility, f"{pictures}/{theme}-{scale}x-"))
    print(f"pictures: {pictures}")


def make_files():
    UPDATE.parent.mkdir()
    make_update(UPDATE, *TEXTS, MEMBERS)
    CUT.write_bytes(UPDATE.read_bytes()[:10_000])
    keyfile = HOME / ".dark/glib-2.0/settings/keyfile"
    keyfile.parent.mkdir(parents=True)
    keyfile.write_text(DARK_GNOME)
    (HOME / ".dark/kdeglobals").write_text("".join(
        f"[Colors:{kind}]\nBackgroundNormal={colour}\nForegroundNormal=252,252,252\n" for kind, colour in DARK.items()))


def session(user, program, shell, theme, scale):
    if shell:
        return NestedUtility(shell, user, program, f"{HOME}/.{theme}")
    return Utility(user, program, scale=scale, width=1280 * scale, height=1024 * scale, environment=THEMES[theme])


def show(utility, account, shoot):
    demo.show(utility, account, UPDATE, TEXTS, shoot)
    utility.answer("Install Another")
    for key, name in ("alt+f", "file-menu"), ("Right", "edit-menu"):
        utility.key(key)
        shoot(name)
    utility.key("Escape", "Escape")
    if not isinstance(utility, NestedUtility):
        choose_nothing(utility, shoot)
    utility.check(str(UPDATE))
    utility.start()
    utility.until(lambda: utility.status() == "Installing Update..." and "progress bar" in utility.roles(MAIN))
    shoot("installing", MAIN)
    utility.outcome()
    utility.answer("Install Another")
    utility.fill("Patchfile:", str(CUT))
    answer(utility, shoot, "invalid-file", "Keep", "Cancel")
    utility.start()
    answer(utility, shoot, "failed", "OK")


def choose_nothing(utility, shoot):
    utility.click("Choose update file")
    utility.window("Open")
    shoot("choose", "Open")
    utility.key("Escape")
    answer(utility, shoot, "no-access", "OK")


def answer(utility, shoot, name, *buttons):
    utility.dialog(*buttons)
    shoot(name)
    utility.answer(buttons[0])


if __name__ == "__main__":
    signals.clean_up_on_signals()
    main(*sys.argv[1:])
