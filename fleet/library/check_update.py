"""Checks an update file on the controller. Returns its size, its SHA-256, the lines of `zelto-make-update --check` as
`report`, and the list `members`.
"""
import contextlib
import os
import resource
import stat
import subprocess
import tarfile

from ansible.module_utils.basic import AnsibleModule
from ansible.module_utils.update_members import digest, pack

TYPES = {tarfile.SYMTYPE: stat.S_IFLNK, tarfile.DIRTYPE: stat.S_IFDIR, tarfile.CHRTYPE: stat.S_IFCHR,
         tarfile.BLKTYPE: stat.S_IFBLK, tarfile.FIFOTYPE: stat.S_IFIFO}
MEMORY = 512 << 20  # a header can claim gigabytes


def digest_of(file):
    with open(file, "rb") as stream:
        return digest(stream)


def describe(archive, member):
    described = {"name": member.name, "type": TYPES.get(member.type, stat.S_IFREG), "mode": member.mode & 0o7777,
                 "owner": [member.uname, member.uid], "group": [member.gname, member.gid]}
    if member.islnk():
        return {"name": member.name, "same": member.linkname}
    if member.issym():
        described["link"] = member.linkname
    elif member.isreg():
        described.update(time=int(member.mtime), size=member.size, sha256=digest(archive.extractfile(member)))
    elif member.ischr() or member.isblk():
        described["device"] = [member.devmajor, member.devminor]
    return described


@contextlib.contextmanager
def limited_memory():
    before = resource.getrlimit(resource.RLIMIT_AS)
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY, before[1]))
    try:
        yield
    finally:
        resource.setrlimit(resource.RLIMIT_AS, before)


def members(file):
    # tarfile's own decompression ends after the first of several gzip members. tar reads them all.
    with subprocess.Popen(["gzip", "-dc", file], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL) as gzip, \
            tarfile.open(fileobj=gzip.stdout, mode="r|") as archive:
        for member in iter(archive.next, None):
            yield describe(archive, member)
            archive.members.clear()


def report(command, file):
    """Returns the lines of the command. Raises ValueError if it does not accept the file."""
    try:
        done = subprocess.run([command, "--check", file], capture_output=True, text=True, errors="replace", check=False)
    except OSError as error:
        raise ValueError(f"Not checked: {command}: {error.strerror}") from error
    reason = ": ".join((done.stdout + done.stderr).splitlines())
    if done.returncode:
        raise ValueError(reason if done.returncode == 2 else f"Not checked: {reason}")
    return done.stdout.splitlines()


def check(file, expected, command):
    if not os.path.isfile(file):
        raise ValueError(f"{file}: it is missing or not a regular file")
    sha256 = digest_of(file)
    for other in expected:
        if other.lower() != sha256:
            raise ValueError(f"{file}: its SHA-256 is {sha256}, not {other}")
    lines = report(command, file)
    with limited_memory():
        listed = list(members(file))
    if not any(line.startswith(f"Content: {len(listed)} members,") for line in lines):
        raise ValueError(f"{file}: tar and Python read different members; make it with zelto-make-update")
    if digest_of(file) != sha256:
        raise ValueError(f"{file}: it changed during the check")
    return {"sha256": sha256, "size": os.path.getsize(file), "report": lines, "members": pack(listed)}


def main():
    parameters = {"file": {"type": "str", "required": True}, "command": {"type": "str", "required": True},
                  "expected": {"type": "list", "elements": "str", "default": []}}
    module = AnsibleModule(argument_spec=parameters, supports_check_mode=True)
    try:
        result = check(**{name: module.params[name] for name in parameters})
    except ValueError as error:
        module.fail_json(msg=str(error))
    except (OSError, EOFError, MemoryError, tarfile.TarError) as error:
        reason = str(error) or "they need too much memory"
        module.fail_json(msg=f"{module.params['file']}: its members cannot be listed: {reason}")
    module.exit_json(**result)


if __name__ == "__main__":
    main()
