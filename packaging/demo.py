"""Installs an update with the utility of the package that is installed in the root directory ROOT:
demo.py ROOT PICTURES_DIR (as root). ROOT and this process must share /tmp."""
import contextlib
import shlex
import shutil
import sys
import tempfile
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "tools"))
from desktop import signals
from desktop.accounts import SUDO_MEMORY, Account, run
from desktop.demo import demonstrate

ENTRY = "usr/share/applications/local.zelto.update_utility.desktop"


def main(root, pictures):
    with tempfile.TemporaryDirectory() as folder, Account() as account, \
            also_in(root, account):
        program = Path(folder, "bin", "start")
        program.parent.mkdir()
        shutil.copy("/usr/sbin/chroot", program.parent)
        program.write_text(f'#!/bin/sh\nexec "${{0%/*}}/chroot" {shlex.quote(root)} {command(root)}\n')
        # The account runs chroot without the rights of root. A desktop session copies the folder with capabilities.
        run(["setcap", "cap_sys_chroot+ep", program.with_name("chroot")])
        demonstrate(program, account, pictures)


def command(root):
    """The command of the desktop entry."""
    line, = (line for line in Path(root, ENTRY).read_text().splitlines() if line.startswith("Exec="))
    return line.removeprefix("Exec=")


@contextlib.contextmanager
def also_in(root, account):
    run(["chroot", root, "useradd", "-m", "-u", str(account.uid), "-s", "/bin/bash", "-G", "sudo", account.name])
    try:
        run(["chroot", root, "chpasswd"], f"{account.name}:{account.password}\n")
        yield
    finally:
        run(["chroot", root, "userdel", "-r", account.name])
        run(["rm", "-rf", *(f"{root}{folder}/{account.name}" for folder in SUDO_MEMORY)])


if __name__ == "__main__":
    signals.clean_up_on_signals()
    main(*sys.argv[1:])
