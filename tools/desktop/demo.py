"""Installs a sample update on a virtual desktop: /usr/bin/python3 demo.py PROGRAM PICTURES_DIR (as root)."""
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent))
from desktop import signals
from desktop.accounts import Account
from desktop.updates import assert_installed, make_update, shared_folder
from desktop.utility import AUTHENTICATE, Utility

TEXTS = "Sample Tools", "2.5", "Two small files that show how an update is installed."


def main(program, pictures):
    with Account() as account:
        demonstrate(program, account, pictures)


def demonstrate(program, account, pictures, **session):
    pictures = Path(pictures)
    pictures.mkdir(parents=True, exist_ok=True)
    with shared_folder() as folder:
        members = {f"{folder}/bin/hello": (b"#!/bin/sh\necho hello\n", 0o755),
                   f"{folder}/share/greeting": (b"Good day.\n", 0o644)}
        make_update(folder / "sample.tar.gz", *TEXTS, members)
        try:
            with Utility(account.name, program, **session) as utility:
                show(utility, account, folder / "sample.tar.gz", pictures)
        finally:
            Path("/tmp/.KVX.Content").unlink(missing_ok=True)  # other users cannot remove a file of root
        assert_installed(members)
        print(*(f"installed: {name}" for name in members), f"pictures: {pictures}", sep="\n")


def show(utility, account, update, pictures):
    utility.window(AUTHENTICATE)
    utility.screenshot(pictures / "01-authenticate.png")
    print(f"authenticating as {account.name}")
    utility.authenticate(account.name, account.password)
    utility.screenshot(pictures / "02-main-window.png")
    print("authenticated: the main window shows")

    with utility.about():
        utility.screenshot(pictures / "03-about.png")

    utility.fill("Patchfile:", str(update))
    utility.shows(*TEXTS)
    utility.screenshot(pictures / "04-update-chosen.png")
    print("update file chosen: product, version and description show")

    utility.start()
    utility.outcome()
    utility.screenshot(pictures / "05-installed.png")
    print("update installed")

    utility.quit()


if __name__ == "__main__":
    signals.clean_up_on_signals()
    main(*sys.argv[1:])
