"""Temporary system accounts, removed at the end with all their traces."""
import contextlib
import secrets
import subprocess

import psutil

from . import signals
from .wait import until

# Entries are named by account name or uid, depending on the version of sudo.
SUDO_MEMORY = ("/var/lib/sudo/ts", "/var/lib/sudo/lectured", "/run/sudo/ts")


class Account:
    def __init__(self, password=None, sudo=True, name=None):
        self.password = password or secrets.token_hex(8)
        self.sudo = sudo
        self.name = name or "zelto-" + secrets.token_hex(3)
        # The removal of an account kills all processes with its uid, even those in containers. A random uid
        # is unlikely to be that of another process.
        self.uid = 20_000 + secrets.randbelow(40_000)

    def __enter__(self):
        groups = ["-G", "sudo"] if self.sudo else []
        with contextlib.ExitStack() as undo:
            with signals.delayed():
                run(["useradd", "-m", "-u", str(self.uid), "-s", "/bin/bash", *groups, self.name])
                undo.push(self)
                run(["chpasswd"], f"{self.name}:{self.password}\n")
            undo.pop_all()
        return self

    def __exit__(self, *_):
        with signals.delayed():
            self._remove()

    def _remove(self):
        until(self._removed, 10, lambda: f"the account {self.name} cannot be removed")
        run(["rm", "-rf", *(f"{folder}/{who}" for folder in SUDO_MEMORY for who in (self.name, self.uid))])

    def processes(self):
        """The ids of the account's processes. Includes the su and sudo that it started, although these run as root."""
        return {process.pid for process in psutil.process_iter(["uids"]) if self.uid in process.info["uids"]}

    def can_open(self, path):
        """Returns whether processes of the account can read the file."""
        command = ["runuser", "-u", self.name, "--", "sh", "-c", ': <"$0"', path]
        return subprocess.run(command, capture_output=True).returncode == 0

    def _removed(self):
        subprocess.run(["pkill", "-KILL", "-U", str(self.uid)])
        return subprocess.run(["userdel", "-r", self.name], capture_output=True).returncode == 0


def run(command, text=None):
    done = subprocess.run(command, input=text, capture_output=True, text=True)
    if done.returncode:
        raise RuntimeError(f"{command[0]}: {done.stderr.strip()}")
    return done.stdout
