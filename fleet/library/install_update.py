"""Compares a machine with an update file and installs the update file.

Without `file`, the copy of the update file on the machine, returns the paths that differ as `differing`, and fails if
the update cannot be installed. Removes only the copies of interrupted runs. With `file`, archives the differing paths
in the new directory `backup`, if given, and extracts the copy.
"""
import contextlib
import fcntl
import glob
import os
import shutil
import subprocess
import time

from ansible.module_utils.basic import AnsibleModule
from ansible.module_utils.update_members import RECORD, differs, digest, unpack

LOCK = "/run/zelto-update.lock"
COPY = "zelto-update.tar.gz"


def run(command, **more):
    """Raises ValueError with the first messages of the command if it fails."""
    environment = {name: value for name, value in os.environ.items() if name not in ("TAR_OPTIONS", "GZIP")}
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False, env=environment, **more)
    if done.returncode:
        raise ValueError("\n".join(done.stderr.decode(errors="replace").splitlines()[:20]))
    return done.stdout


def require_programs():
    try:
        gnu = b"GNU tar" in run(["tar", "--version"])
    except (OSError, ValueError):
        gnu = False
    if not gnu or not shutil.which("gzip"):
        raise ValueError("The machine needs GNU tar and gzip")


def nearest(path):
    """Returns the path or its nearest parent that exists."""
    while not os.path.exists(path):
        path = os.path.dirname(path)
    return path


def size_of(path):
    return os.lstat(path).st_size if os.path.isfile(path) and not os.path.islink(path) else 0


def require_space(differing, copy, backup):
    """copy and backup: a folder and the number of bytes that it will get."""
    needed = {}
    growth = [(os.path.dirname(os.path.abspath(member["name"])), member.get("size", 0) - size_of(member["name"]))
              for member in differing]
    for folder, size in [*growth, copy, backup]:
        folder = nearest(folder)
        disk = needed.setdefault(os.stat(folder).st_dev, [folder, 0])
        disk[1] += max(0, size)
    for folder, size in needed.values():
        disk = os.statvfs(folder)
        free = disk.f_bavail * disk.f_frsize
        if size > free:
            raise ValueError(f"The file system of {folder} needs {size} bytes, but only {free} are free")


@contextlib.contextmanager
def locked(seconds):
    """Raises ValueError if another process keeps the lock for so long."""
    end = time.monotonic() + seconds
    with open(LOCK, "w") as lock:
        while True:
            try:
                fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
                break
            except BlockingIOError:
                if time.monotonic() > end:
                    raise ValueError(f"Another installation has held {LOCK} for {seconds} seconds") from None
                time.sleep(0.2)
        yield lock


def remove_leftovers(folder):
    """Removes the copies of interrupted runs: the old ones that no process has open. folder: of all copies."""
    for copy in glob.glob(f"{glob.escape(folder)}/*/{COPY}"):
        with contextlib.suppress(OSError), open(copy, "r+b") as stream:
            fcntl.fcntl(stream, fcntl.F_SETLEASE, fcntl.F_WRLCK)  # fails if another process has it open
            if time.time() - os.fstat(stream.fileno()).st_mtime > 10:  # its module may be about to start
                shutil.rmtree(os.path.dirname(copy))


def back_up(folder, paths):
    """Archives the existing paths, and lists the others with their new parents, the deepest first."""
    if os.path.exists(folder):
        raise ValueError(f"{folder} is the backup of another installation; give a new name")
    part = f"{folder}.part"
    shutil.rmtree(part, ignore_errors=True)
    os.makedirs(part, 0o700)
    new = set()
    for path in paths:
        path = os.path.abspath(path)
        while not os.path.lexists(path):
            new.add(path)
            path = os.path.dirname(path)
    existing = [path for path in paths if os.path.lexists(path)]
    with open(f"{part}/new", "wb") as stream:
        stream.write(b"".join(os.fsencode(path) + b"\0" for path in sorted(new, reverse=True)))
    os.umask(0o077)
    run(["tar", "-czPf", f"{part}/before.tar.gz", "--no-recursion", "--null", "-T", "-"],
        input=b"".join(os.fsencode(path) + b"\0" for path in existing))
    os.rename(part, folder)


def install(members, file, sha256, backup, wait):
    with open(file, "rb") as copy, locked(wait) as lock:
        if digest(copy) != sha256:
            raise ValueError("The copied file is not the one that was checked")
        differing = [member for member in members if differs(member)]  # another run can have installed it meanwhile
        if differing and backup:
            back_up(backup, [member["name"] for member in differing])
        if differing:
            copy.seek(0)
            os.umask(0o022)
            # If the connection breaks, tar goes on to the end, and keeps the lock until then.
            run(["tar", "--anchored", "--no-wildcards", f"--exclude={RECORD}", "-zxPf", "-"], stdin=copy,
                pass_fds=[lock.fileno()], start_new_session=True)
    return differing


def compare(members, folder, size, backup):
    differing = [member for member in members if differs(member)]
    if differing:
        require_programs()
        replaced = sum(size_of(member["name"]) for member in differing)
        require_space(differing, (folder, size), (backup or folder, replaced if backup else 0))
    return differing


def main():
    module = AnsibleModule(argument_spec={
        "members": {"type": "str", "required": True}, "size": {"type": "int"}, "sha256": {"type": "str"},
        "file": {"type": "str"}, "backup": {"type": "str"}, "wait": {"type": "int"}}, supports_check_mode=True)
    list_file, size, sha256, file, backup, wait = (
        module.params[name] for name in ("members", "size", "sha256", "file", "backup", "wait"))
    os.chdir("/")  # where relative members are installed
    try:
        with open(list_file, "rb") as stream:
            members = unpack(stream.read()).values()
        if file:
            differing = install(members, file, sha256, backup, wait)
        else:
            if not module.check_mode:
                remove_leftovers(os.path.dirname(os.path.dirname(list_file)))
            differing = compare(members, os.path.dirname(list_file), size, backup)
    except (ValueError, OSError) as error:
        module.fail_json(msg=str(error))
    module.exit_json(changed=bool(file and differing),
                     differing=sorted(ascii(member["name"])[1:-1] for member in differing))


if __name__ == "__main__":
    main()
