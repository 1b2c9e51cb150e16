"""Compares the members of an update file with the files of a machine that has no copy of the update file.

With `file`, returns the members of that update file as the string `members`. With `members`, returns
the list `differing` of the paths that differ on the machine. Changes nothing.
"""
import base64
import grp
import hashlib
import json
import os
import pwd
import stat
import tarfile
import zlib

from ansible.module_utils.basic import AnsibleModule

RECORD = "/tmp/.KVX.Content"  # ignored: a reboot empties /tmp
TYPES = {tarfile.SYMTYPE: stat.S_IFLNK, tarfile.DIRTYPE: stat.S_IFDIR, tarfile.CHRTYPE: stat.S_IFCHR,
         tarfile.BLKTYPE: stat.S_IFBLK, tarfile.FIFOTYPE: stat.S_IFIFO}


def digest(stream):
    content = hashlib.sha256()
    while True:
        part = stream.read(1 << 20)
        if not part:
            return content.hexdigest()
        content.update(part)


def describe(archive, member):
    described = {"type": TYPES.get(member.type, stat.S_IFREG), "mode": member.mode & 0o7777,
                 "owner": [member.uname, member.uid], "group": [member.gname, member.gid]}
    if member.islnk():
        return {"same": member.linkname}
    if member.issym():
        described["link"] = member.linkname
    elif member.isreg():
        described.update(time=int(member.mtime), size=member.size, sha256=digest(archive.extractfile(member)))
    elif member.ischr() or member.isblk():
        described["device"] = [member.devmajor, member.devminor]
    return described


def pack(file):
    with tarfile.open(file, "r|gz") as archive:  # a later member replaces an earlier one of the same name
        members = {member.name: describe(archive, member) for member in archive}
    members.pop(RECORD, None)
    return base64.b64encode(zlib.compress(json.dumps(members).encode())).decode()


def number(look_up, name_and_number):
    """Returns the id of the name or, if the machine does not have the name, the number. tar does the same."""
    try:
        return look_up(name_and_number[0])[2]
    except KeyError:
        return name_and_number[1]


def fits(path, member):
    if "same" in member:
        return os.path.samefile(path, member["same"])
    found = os.lstat(path)
    owners = number(pwd.getpwnam, member["owner"]), number(grp.getgrnam, member["group"])
    if stat.S_IFMT(found.st_mode) != member["type"] or (found.st_uid, found.st_gid) != owners:
        return False
    if "link" in member:
        return os.readlink(path) == member["link"]
    if stat.S_IMODE(found.st_mode) != member["mode"]:
        return False
    if "device" in member:
        return [os.major(found.st_rdev), os.minor(found.st_rdev)] == member["device"]
    if "sha256" not in member:
        return True
    if (found.st_size, int(found.st_mtime)) != (member["size"], member["time"]):
        return False
    with open(path, "rb") as stream:
        return digest(stream) == member["sha256"]


def differs(path, member):
    try:
        return not fits(path, member)
    except OSError:
        return True


def main():
    module = AnsibleModule(argument_spec={"file": {"type": "path"}, "members": {"type": "str"}},
                           required_one_of=[["file", "members"]], supports_check_mode=True)
    if module.params["file"]:
        module.exit_json(members=pack(module.params["file"]))
    members = json.loads(zlib.decompress(base64.b64decode(module.params["members"])).decode())
    differing = sorted(path for path, member in members.items() if differs(path, member))
    module.exit_json(differing=[ascii(path)[1:-1] for path in differing])


if __name__ == "__main__":
    main()
