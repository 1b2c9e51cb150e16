"""Installs a sample update on a virtual desktop: /usr/bin/python3 demo.py PROGRAM PICTURES_DIR (as root)."""
import itertools
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent))
from desktop import signals
from desktop.accounts import Account
from desktop.updates import assert_installed, make_update, shared_folder
from desktop.utility import AUTHENTICATE, MAIN, Utility

TEXTS = "Sample Tools", "2.5", "Two small files that show how an update is installed."


def main(program, pictures):
    with Account() as account:
        demonstrate(program, account, pictures)


def demonstrate(program, account, pictures):
    Path(pictures).mkdir(parents=True, exist_ok=True)
    with shared_folder() as folder:
        members = {f"{folder}/bin/hello": (b"#!/bin/sh\necho hello\n", 0o755),
                   f"{folder}/share/greeting": (b"Good day.\n", 0o644)}
        make_update(folder / "sample.tar.gz", *TEXTS, members)
        try:
            with Utility(account.name, program) as utility:
                show(utility, account, folder / "sample.tar.gz", TEXTS, camera(utility, f"{pictures}/"))
                utility.quit()
        finally:
            Path("/tmp/.KVX.Content").unlink(missing_ok=True)  # other users cannot remove a file of root
        assert_installed(members)
        print(*(f"installed: {name}" for name in members), f"pictures: {pictures}", sep="\n")


def camera(utility, prefix):
    """A function that saves a numbered picture of the window with a title or of all windows."""
    numbers = itertools.count(1)

    def shoot(name, title=None):
        utility.screenshot(f"{prefix}{next(numbers):02}-{name}.png", title)
    return shoot


def show(utility, account, update, texts, shoot):
    """Authenticates and installs the update, with a picture of each step. Ends in the dialog of the success."""
    utility.window(AUTHENTICATE)
    utility.key("Home")  # shows the caret
    shoot("authenticate", AUTHENTICATE)
    print(f"authenticating as {account.name}")
    utility.authenticate(account.name, account.password)
    shoot("main-window", MAIN)
    print("authenticated: the main window shows")
    with utility.about():
        shoot("about", "About")
    utility.check(str(update))
    utility.shows(*texts)
    shoot("chosen", MAIN)
    print("update file chosen: product, version and description show")
    utility.start()
    utility.outcome()
    shoot("installed")
    print("update installed")


if __name__ == "__main__":
    signals.clean_up_on_signals()
    main(*sys.argv[1:])
