"""The members of an update file, counted from the listing of tar."""
import re

from make_update.record import CONTROL

# The directories and links that exist on every system, without the leading "/".
STANDARD = re.compile(
    r"bin|boot|dev|etc|home|lib(32|64|x32)?|media|mnt|opt|proc|root|run|sbin|srv|sys|tmp|usr|var|"
    r"etc/(alternatives|apt|default|init[.]d|opt|pam[.]d|profile[.]d|skel|ssl|systemd|xdg)|"
    r"usr/(local|(local/)?(bin|etc|games|include|lib(32|64|x32|exec)?|man|sbin|share|src))|"
    r"usr/lib/[^/]*-linux-gnu[^/]*|usr/(local/)?share/(applications|doc|icons|info|man|man/man.|misc)|"
    r"var/(backups|cache|lib|local|lock|log|mail|opt|run|spool|spool/mail|tmp)")
SYSTEM = re.compile(r"/(bin|boot|dev|etc|lib[^/]*|proc|root|run|sbin|sys|usr|var)(/|$)")
OUTSIDE_SYSTEM = re.compile(r"/(usr/local|etc/opt|var/opt)/")

RISKS = {
    "relative": "installed below the directory where the utility was started",
    "upward": 'a ".." leads to another directory',
    "through": "installed through a link in the same file",
    "directory": "sets the mode and the owner of an existing directory, or replaces a link",
    "standard": "replaces a standard directory or link",
    "system": "among the files of the operating system",
    "device": "a device or pipe",
    "setuid": "setuid: runs with the rights of its owner",
    "setgid": "setgid: runs with the rights of its group",
    "group": "every user of its group can change it",
    "writable": "every user can change it"}

# Mode, size and name; the name is in quotes, with backslashes.
MEMBER = re.compile(r'(\S+) \S+ +(\d+)[^"]*"((?:[^"\\]|\\.)*)')


class Contents:
    """Counts the members of each kind that is a risk."""

    def __init__(self, listing):
        self.members = self.bytes = self.records = 0
        self._found = {risk: [] for risk in RISKS}  # each with the first name and the number of names
        self._links = set()
        for line in listing:
            if match := MEMBER.match(line):
                self._add(match[1], int(match[2]), match[3])

    def _add(self, mode, size, name):
        self.members += 1
        self.bytes += 0 if mode[0] in "bch" else size
        self.records += name == CONTROL and mode[0] not in "bcdhlp"
        # Normalises the name as tar does, but keeps each "..".
        name = re.sub(r"/\.?$", "", re.sub(r"/(\.?/)+", "/", name))
        for risk in (*self._risks_of_name(name), *risks_of_mode(mode)):
            first, count = self._found[risk] or (name, 0)
            self._found[risk] = first, count + 1
        if mode[0] == "l":
            self._links.add(name)

    def _risks_of_name(self, name):
        if not name.startswith("/"):
            yield "relative"
        if ".." in name and ".." in name.split("/"):
            yield "upward"
        if self._links and any(name[:slash.start()] in self._links for slash in re.finditer("/", name)):
            yield "through"
        if STANDARD.fullmatch(name, 1):
            yield "standard"
        if SYSTEM.match(name) and not OUTSIDE_SYSTEM.match(name):
            yield "system"

    def report(self):
        yield f"Content: {self.members} members, {self.bytes} bytes when unpacked"
        if self.records > 1:
            yield f"Warning: {CONTROL} ({self.records} in all): the last one is shown"
        for risk, found in self._found.items():
            if found:
                yield f"Warning: {found[0]} ({found[1]} in all): {RISKS[risk]}"


def risks_of_mode(mode):
    if mode[0] == "d":
        yield "directory"
    if mode[0] in "bcp":
        yield "device"
    if mode[3] in "sS":
        yield "setuid"
    if mode[6] in "sS":
        yield "setgid"
    if mode[0] != "l" and "w" in (mode[5], mode[8]):
        yield "writable" if mode[8] == "w" else "group"
