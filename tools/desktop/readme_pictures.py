"""Saves the pictures of the README and of software catalogues, light and dark:
/usr/bin/python3 readme_pictures.py PROGRAM PICTURES_DIR (as root). Creates the account "anna"."""
import secrets
import subprocess
import sys
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent))
from desktop import signals
from desktop.accounts import Account
from desktop.pictures import DARK, desktop_of
from desktop.updates import make_update
from desktop.utility import AUTHENTICATE, MAIN, Utility

# Enough files that the installation lasts until its picture is taken.
MEMBERS = {f"/home/anna/installed/{number}": (b"", 0o644) for number in range(100_000)}
SCALE = 2
TEXTS = "ZELTO Core Services", "4.2", "Faster start, and a fix for reports that stayed in the queue."


def main(program, pictures):
    for theme in "light", "dark":
        with Account(secrets.token_urlsafe(), name="anna") as account:
            downloads, settings = Path("/home/anna/Downloads"), Path("/home/anna", theme)
            for folder in downloads, settings:
                folder.mkdir()
                folder.chmod(0o755)
            update = downloads / "zelto-core-4.2.tar.gz"
            make_update(update, *TEXTS, MEMBERS)
            (settings / "kdeglobals").write_text(DARK)
            with Utility(account.name, program, scale=SCALE, width=1280 * SCALE, height=1024 * SCALE,
                         environment=desktop_of(settings)) as utility:
                show(utility, account, update, lambda name: Path(pictures, f"{name}-{theme}.png"))


def show(utility, account, update, picture):
    utility.window(AUTHENTICATE)
    utility.key("Home")  # shows the caret
    shoot(utility, picture("authenticate"), AUTHENTICATE)
    utility.authenticate(account.name, account.password)
    utility.fill("Patchfile:", str(update))
    utility.shows(*TEXTS)
    utility.until(utility.can_update)
    shoot(utility, picture("main-window"), MAIN)
    utility.start()
    utility.until(lambda: utility.status() == "Installing Update...")
    time.sleep(0.5)  # the progress bar appears after 0.3 seconds
    shoot(utility, picture("installing"), MAIN)
    utility.outcome()
    utility.click("Quit")
    assert utility.exit_status() == 0


def shoot(utility, picture, title):
    utility.screenshot(picture, title)
    subprocess.run(["mogrify", "-strip", "-define", "png:exclude-chunk=time", picture], check=True)


if __name__ == "__main__":
    signals.clean_up_on_signals()
    main(*sys.argv[1:])
