"""The member list of an update file: one JSON value per member and line, compressed, in base64."""
import base64
import grp
import hashlib
import json
import os
import pwd
import stat
import zlib

RECORD = "/tmp/.KVX.Content"  # left out: any account can plant a directory there, and a reboot empties /tmp


def digest(stream):
    content = hashlib.sha256()
    while True:
        part = stream.read(1 << 20)
        if not part:
            return content.hexdigest()
        content.update(part)


def pack(members):
    packer = zlib.compressobj()
    packed = [packer.compress(json.dumps(member).encode() + b"\n") for member in members]
    return base64.b64encode(b"".join(packed) + packer.flush()).decode()


def unpack(packed):
    """Returns the members by name. A later one replaces an earlier one of the same name, as in tar."""
    members = (json.loads(line) for line in zlib.decompress(base64.b64decode(packed)).splitlines())
    return {member["name"]: member for member in members if not f"{member['name']}/".startswith(f"{RECORD}/")}


def differs(member):
    try:
        return not _fits(member["name"], member)
    except OSError:
        return True


def _number(look_up, name_and_number):
    """Returns the id of the name or, if the machine does not have the name, the number. tar does the same."""
    try:
        return look_up(name_and_number[0])[2]
    except KeyError:
        return name_and_number[1]


def _fits(path, member):
    if "same" in member:
        return os.path.samefile(path, member["same"])
    found = os.lstat(path)
    owners = _number(pwd.getpwnam, member["owner"]), _number(grp.getgrnam, member["group"])
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
