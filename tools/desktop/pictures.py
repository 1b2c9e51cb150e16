"""Takes a picture of every window and dialog, light and dark, at one and two times the size:
/usr/bin/python3 pictures.py PROGRAM PICTURES_DIR (as root)."""
import secrets
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent))
from desktop.accounts import Account
from desktop.demo import AUTHENTICATE, MAIN, fill
from desktop.session import Session
from desktop.updates import make_update

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
                with Account(secrets.token_urlsafe()) as account, Session(
                        account.name, program, scale=scale, width=1280 * scale, height=1024 * scale,
                        environment=desktop_of(folder / theme)) as desktop:
                    play(desktop, account, folder, Shots(desktop, pictures, f"{theme}-{scale}x"))
        print(f"pictures: {pictures}")
    finally:
        shutil.rmtree(folder)


class Shots:
    def __init__(self, desktop, pictures, prefix):
        self._desktop, self._pictures, self._prefix, self._count = desktop, pictures, prefix, 0

    def take(self, name, title):
        self._count += 1
        picture = self._pictures / f"{self._prefix}-{self._count:02}-{name}.png"
        self._desktop.screenshot(picture, title)
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
    """The toolkit itself reads the settings of a desktop of this kind; the program has no part in it."""
    return {} if settings.name == "light" else {"XDG_CURRENT_DESKTOP": "KDE", "KDE_SESSION_VERSION": "5", "XDG_CONFIG_HOME": str(settings)}


def play(desktop, account, folder, shots):
    desktop.window(AUTHENTICATE)
    fill(desktop, "Name:", account.name)
    shots.take("authenticate", AUTHENTICATE)
    fill(desktop, "Password or Phrase:", account.password)
    desktop.click("Authenticate")
    desktop.window(MAIN)
    shots.take("main-window", MAIN)
    for menu, name in (("alt+f", "file-menu"), ("alt+e", "edit-menu")):
        desktop.key(menu)
        shots.take(name, None)
        desktop.key("Escape")
        desktop.key("Escape")
    desktop.key("alt+f")
    desktop.key("Down")
    desktop.key("Return")
    desktop.window("About")
    shots.take("about", "About")
    desktop.key("Escape")
    desktop.window(MAIN)
    desktop.click("Choose update file")
    desktop.until(lambda: desktop.windows()[0] != MAIN)
    shots.take("choose", desktop.windows()[0])
    desktop.key("Escape")
    answer(desktop, "OK", shots, "no-access")
    fill(desktop, "Patchfile:", str(folder / "cut.tar.gz"))
    answer(desktop, "Keep", shots, "invalid-file")
    desktop.until(lambda: desktop.state("Update")["enabled"])
    desktop.click("Update")
    answer(desktop, "OK", shots, "failed")
    fill(desktop, "Patchfile:", str(folder / "large.tar.gz"))
    desktop.until(lambda: desktop.label_at(MAIN, 317, 103) == "3.0 beta 2")
    shots.take("chosen", MAIN)
    desktop.click("Update")
    desktop.until(lambda: desktop.label_at(MAIN, 20, 269) == "Installing Update...")
    shots.take("installing", MAIN)
    answer(desktop, "Quit", shots, "installed")
    assert desktop.exit_status() == 0


def answer(desktop, button, shots, name):
    desktop.until(lambda: button in desktop.buttons(desktop.windows()[0]), 60)
    shots.take(name, None)
    desktop.press(button)


if __name__ == "__main__":
    main(*sys.argv[1:])
