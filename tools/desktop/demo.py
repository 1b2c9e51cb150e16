"""Installs a sample update by hand, on a virtual desktop: /usr/bin/python3 demo.py PROGRAM PICTURES_DIR (as root)."""
import secrets
import shutil
import sys
import tempfile
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent))
from desktop.accounts import Account
from desktop.session import Session
from desktop.updates import make_update

AUTHENTICATE, MAIN = "Authenticate", "ZELTO Group Update Utility"
DESCRIPTION = "Two small files that show how an update is installed."


def main(program, pictures):
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
        with Account(secrets.token_urlsafe()) as account, Session(account.name, program) as desktop:
            status = play(desktop, account, update, pictures)
        assert status == 0, f"exit status {status}"
        for name, (content, mode) in members.items():
            check(Path(name), content, mode)
            print(f"installed: {name}")
        print(f"pictures: {pictures}")
    finally:
        shutil.rmtree(folder)
        shutil.rmtree(target, ignore_errors=True)


def play(desktop, account, update, pictures):
    desktop.window(AUTHENTICATE)
    fill(desktop, "Name:", account.name)
    desktop.screenshot(pictures / "01-authenticate.png")
    fill(desktop, "Password or Phrase:", account.password)
    desktop.click("Authenticate")
    print(f"authenticating as {account.name}")

    desktop.window(MAIN)
    desktop.screenshot(pictures / "02-main-window.png")
    print("authenticated: the main window shows")

    fill(desktop, "Patchfile:", str(update))
    desktop.until(lambda: desktop.label_at(MAIN, 71, 103) == "Sample Tools")
    desktop.until(lambda: desktop.label_at(MAIN, 317, 103) == "2.5")
    desktop.until(lambda: desktop.text("Description").strip() == DESCRIPTION)
    desktop.screenshot(pictures / "03-update-chosen.png")
    print("update file chosen: product, version and description show")

    desktop.click("Update")
    # A question offered only when the installation went well.
    desktop.until(lambda: "Install Another" in desktop.buttons(desktop.windows()[0]))
    desktop.screenshot(pictures / "04-installed.png")
    print("update installed")

    desktop.click("Quit")
    status = desktop.exit_status()
    print(f"quit: exit status {status}")
    return status


def fill(desktop, field, text):
    desktop.click(field)
    desktop.key("ctrl+a")
    desktop.type(text)


def check(path, content, mode):
    found = path.stat()
    assert path.read_bytes() == content, f"{path}: other content"
    assert (found.st_uid, found.st_gid, found.st_mode & 0o777) == (0, 0, mode), f"{path}: other owner or mode"


if __name__ == "__main__":
    main(*sys.argv[1:])
