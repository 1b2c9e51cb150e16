"""Installs a sample update on a virtual desktop: /usr/bin/python3 demo.py PROGRAM PICTURES_DIR (as root)."""
import secrets
import shutil
import sys
import tempfile
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent))
from desktop import signals
from desktop.accounts import Account
from desktop.updates import make_update
from desktop.utility import AUTHENTICATE, MAIN, Utility

DESCRIPTION = "Two small files that show how an update is installed."


def main(program, pictures):
    with Account(secrets.token_urlsafe()) as account:
        demonstrate(program, account, pictures)


def demonstrate(program, account, pictures, root="", **session):
    """root: the directory that is / for the program."""
    pictures = Path(pictures)
    pictures.mkdir(parents=True, exist_ok=True)
    unique = "zelto-demo-" + secrets.token_hex(4)
    target, folder = Path("/opt", unique), Path(tempfile.gettempdir(), unique)
    members = {f"{target}/bin/hello": (b"#!/bin/sh\necho hello\n", 0o755),
               f"{target}/share/greeting": (b"Good day.\n", 0o644)}
    folder.mkdir()
    try:
        folder.chmod(0o755)
        update = folder / "sample.tar.gz"
        make_update(update, "Sample Tools", "2.5", DESCRIPTION, members)
        with Utility(account.name, program, **session) as utility:
            status = show(utility, account, update, pictures)
        assert status == 0, f"exit status {status}"
        for name, (content, mode) in members.items():
            check(Path(root + name), content, mode)
            print(f"installed: {name}")
        print(f"pictures: {pictures}")
    finally:
        shutil.rmtree(folder)
        shutil.rmtree(f"{root}{target}", ignore_errors=True)
        Path(f"{root}/tmp/.KVX.Content").unlink(missing_ok=True)  # other users cannot remove a file of root


def show(utility, account, update, pictures):
    utility.window(AUTHENTICATE)
    utility.screenshot(pictures / "01-authenticate.png")
    print(f"authenticating as {account.name}")
    utility.authenticate(account.name, account.password)
    utility.screenshot(pictures / "02-main-window.png")
    print("authenticated: the main window shows")

    utility.key("alt+f", "Down", "Return")
    utility.window("About")
    utility.screenshot(pictures / "03-about.png")
    utility.key("Escape")
    utility.window(MAIN)

    utility.fill("Patchfile:", str(update))
    utility.shows("Sample Tools", "2.5", DESCRIPTION)
    utility.screenshot(pictures / "04-update-chosen.png")
    print("update file chosen: product, version and description show")

    utility.start()
    utility.outcome()
    utility.screenshot(pictures / "05-installed.png")
    print("update installed")

    utility.click("Quit")
    status = utility.exit_status()
    print(f"quit: exit status {status}")
    return status


def check(path, content, mode):
    found = path.stat()
    assert path.read_bytes() == content, f"{path}: wrong content"
    assert (found.st_uid, found.st_gid, found.st_mode & 0o777) == (0, 0, mode), f"{path}: wrong owner or mode"


if __name__ == "__main__":
    signals.clean_up_on_signals()
    main(*sys.argv[1:])
