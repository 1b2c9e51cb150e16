"""Saves a picture of every window and dialog, light and dark, at scales 1 and 2:
/usr/bin/python3 pictures.py PROGRAM PICTURES_DIR (as root)."""
import secrets
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent))
from desktop import signals
from desktop.accounts import Account
from desktop.updates import make_update
from desktop.utility import AUTHENTICATE, MAIN, Utility

DARK = """[Colors:Window]
BackgroundNormal=42,46,50
ForegroundNormal=252,252,252
[Colors:View]
BackgroundNormal=27,30,32
ForegroundNormal=252,252,252
[Colors:Button]
BackgroundNormal=49,54,59
ForegroundNormal=252,252,252
[Colors:Selection]
BackgroundNormal=61,174,233
ForegroundNormal=252,252,252
"""


def main(program, pictures):
    pictures = Path(pictures)
    shutil.rmtree(pictures, ignore_errors=True)
    pictures.mkdir(parents=True)
    folder = Path(tempfile.gettempdir(), "zelto-pictures-" + secrets.token_hex(4))
    folder.mkdir()
    try:
        folder.chmod(0o755)
        make_files(folder)
        for theme in ("light", "dark"):
            for scale in (1, 2):
                with Account(secrets.token_urlsafe()) as account, Utility(
                        account.name, program, scale=scale, width=1280 * scale, height=1024 * scale, frames=False,
                        environment=desktop_of(folder / theme)) as utility:
                    show(utility, account, folder, Shots(utility, pictures, f"{theme}-{scale}x"))
        print(f"pictures: {pictures}")
    finally:
        shutil.rmtree(folder)


class Shots:
    def __init__(self, utility, pictures, prefix):
        self._utility, self._pictures, self._prefix, self._count = utility, pictures, prefix, 0

    def take(self, name, title):
        self._count += 1
        picture = self._pictures / f"{self._prefix}-{self._count:02}-{name}.png"
        self._utility.screenshot(picture, title)
        if title is None:  # the border of the picture is empty screen
            subprocess.run(["mogrify", "-trim", "+repage", picture], check=True)


def make_files(folder):
    target = folder / "installed"
    make_update(folder / "tools.tar.gz", "Sample Tools", "2.5",
                "Two small files that show how an update is installed.",
                {f"{target}/hello": (b"#!/bin/sh\necho hello\n", 0o755), f"{target}/greeting": (b"Good day.\n", 0o644)})
    make_update(folder / "large.tar.gz", "Sample Tools, complete", "3.0 beta 2",
                "Enough files to see an installation at work.",
                {f"{target}/large/{number}": (b"x" * 2000, 0o644) for number in range(40000)})
    cut = (folder / "large.tar.gz").read_bytes()
    (folder / "cut.tar.gz").write_bytes(cut[:len(cut) // 40])
    (folder / "dark").mkdir()
    (folder / "dark" / "kdeglobals").write_text(DARK)


def desktop_of(settings):
    """The environment for the theme. For a dark one, Qt reads the settings of a KDE desktop."""
    dark = {"XDG_CURRENT_DESKTOP": "KDE", "KDE_SESSION_VERSION": "5", "XDG_CONFIG_HOME": str(settings)}
    return {} if settings.name == "light" else dark


def show(utility, account, folder, shots):
    utility.window(AUTHENTICATE)
    shots.take("authenticate", AUTHENTICATE)
    utility.authenticate(account.name, account.password)
    shots.take("main-window", MAIN)
    for menu, name in (("alt+f", "file-menu"), ("alt+e", "edit-menu")):
        utility.key(menu)
        shots.take(name, None)
        utility.key("Escape", "Escape")
    utility.key("alt+f", "Down", "Return")
    utility.window("About")
    shots.take("about", "About")
    utility.key("Escape")
    utility.window(MAIN)
    utility.click("Choose update file")
    utility.window("Open")
    shots.take("choose", "Open")
    utility.key("Escape")
    answer(utility, shots, "no-access", "OK")
    utility.fill("Patchfile:", str(folder / "cut.tar.gz"))
    answer(utility, shots, "invalid-file", "Keep", "Cancel")
    utility.start()
    answer(utility, shots, "failed", "OK")
    utility.fill("Patchfile:", str(folder / "large.tar.gz"))
    utility.until(lambda: utility.record()[1] == "3.0 beta 2")
    shots.take("chosen", MAIN)
    utility.start()
    utility.until(lambda: utility.status() == "Installing Update..." and "progress bar" in utility.roles(MAIN))
    shots.take("installing", MAIN)
    utility.outcome()
    shots.take("installed", None)
    utility.click("Quit")
    assert utility.exit_status() == 0


def answer(utility, shots, name, *buttons):
    utility.dialog(*buttons)
    shots.take(name, None)
    utility.answer(buttons[0])


if __name__ == "__main__":
    signals.clean_up_on_signals()
    main(*sys.argv[1:])
