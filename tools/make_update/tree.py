"""The directory tree from which an update is made."""
import os
import re
import stat

from make_update.contents import STANDARD
from make_update.messages import Refusal, quoted

NAME_LIMIT = 20  # of a message
DIRECTORY_MODE = 0o755
USERS = 0, os.getuid()  # nobody misses these owners in an update
GROUPS = 0, os.getgid()


class Entry:
    """A file, link or directory of the tree."""

    def __init__(self, name, status):
        self.name = name  # relative to the tree
        self.status = status
        self.is_empty = True  # of a directory
        self.is_file, self.is_link, self.is_directory = (
            test(status.st_mode) for test in (stat.S_ISREG, stat.S_ISLNK, stat.S_ISDIR))

    def is_at_top(self):
        return "/" not in self.name

    def is_member(self):
        """Directories with files are not members. If they were, tar would change the mode and owner of an existing
        directory and would replace a link to a directory."""
        return not self.is_directory or self.is_empty

    def has_other_mode(self):
        return not self.is_member() and stat.S_IMODE(self.status.st_mode) != DIRECTORY_MODE

    def has_rights_of_another(self):
        status = self.status
        return self.is_file and (status.st_mode & stat.S_ISUID and status.st_uid not in USERS or
                                 status.st_mode & stat.S_ISGID and status.st_gid not in GROUPS)


RULES = {
    "a name with a newline; rename it:": lambda entry: "\n" in entry.name,
    "only files, links and directories can be installed; remove:":
        lambda entry: not (entry.is_file or entry.is_link or entry.is_directory),
    "a link at the top can replace a directory; remove:": lambda entry: entry.is_link and entry.is_at_top(),
    "an update cannot install files in /tmp; move:": lambda entry: entry.name == "tmp",
    "an empty directory at the top can replace a link of the system; fill or remove it:":
        lambda entry: entry.is_directory and entry.is_empty and entry.is_at_top(),
    "a standard directory or link would be replaced; remove:":
        lambda entry: entry.is_member() and STANDARD.fullmatch(entry.name),
    "a setuid or setgid file of another account would get the rights of root; change its owner or mode:":
        Entry.has_rights_of_another}


class Tree:
    def __init__(self, folder):
        self.folder = folder
        self.entries = []
        self._unreadable = []
        self._root = Entry("", os.stat(folder))
        self._list(self._root)
        for entry in self.entries:  # grows during the loop
            if entry.is_directory:
                self._list(entry)
            elif entry.is_file and not os.access(self._path(entry), os.R_OK):
                self._unreadable.append(entry)

    def _path(self, entry):
        return os.path.join(self.folder, entry.name)

    def _list(self, directory):
        try:
            with os.scandir(self._path(directory)) as children:
                found = [Entry(os.path.join(directory.name, child.name), child.stat(follow_symlinks=False))
                         for child in children]
        except PermissionError:
            self._unreadable.append(directory)
        else:
            directory.is_empty = not found
            self.entries += found

    def require_rules(self):
        self._forbid("it cannot be read; change its mode or run this as its owner:", self._unreadable)
        for remedy, applies in RULES.items():
            self._forbid(remedy, [entry for entry in self.entries if applies(entry)])
        self._require_modes([entry for entry in self.entries if entry.has_other_mode()])
        if not self.entries:
            raise Refusal(f"{quoted(self.folder)}: it is empty; add the files to install")

    def _forbid(self, remedy, entries):
        if entries:
            names = sorted(quoted(self._path(entry)) for entry in entries)
            more = [f"and {len(names) - NAME_LIMIT} more"] if len(names) > NAME_LIMIT else []
            raise Refusal(" ".join([remedy, *names[:NAME_LIMIT], *more]))

    def _require_modes(self, entries):
        remedy = "an update does not keep the modes of directories with files; run:"
        if len(entries) > NAME_LIMIT:
            raise Refusal(f"{remedy} find {quoted(self.folder)} -mindepth 1 -type d ! -empty ! -perm 0755 "
                          "-exec chmod 00755 {} +")
        self._forbid(f"{remedy} chmod 00755", entries)

    def contains(self, folder):
        status = os.stat(folder)
        return any(os.path.samestat(entry.status, status) for entry in [self._root, *self.entries])

    def member_list(self):
        """Returns the names of the members in the order of the archive, each with a NUL at its end."""
        return b"".join(sorted(os.fsencode(f"./{entry.name}\0") for entry in self.entries if entry.is_member()))

    def losses(self):
        """Yields a warning of each kind of attribute that the update does not keep."""
        attributes = [self._attributes(entry) for entry in self.entries]
        for what, count in {
                "an owner other than root": sum(entry.status.st_uid not in USERS or entry.status.st_gid not in GROUPS
                                                for entry in self.entries),
                "an access control list": sum("posix_acl" in names for names in attributes),
                "a capability or extended attribute":
                    sum(bool(re.search(r"\b(user\.|security\.capability)", names)) for names in attributes)}.items():
            if count:
                yield f"Warning: {what} is not kept ({count} in all)"
        yield from self._growth()

    def _attributes(self, entry):
        try:
            return " ".join(os.listxattr(self._path(entry), follow_symlinks=False))
        except OSError:  # the file system has none
            return ""

    def _growth(self):
        sizes = {}
        for status in (entry.status for entry in self.entries if entry.is_file and entry.status.st_nlink > 1):
            sizes.setdefault((status.st_dev, status.st_ino), []).append(status.st_size)
        copies = [size for first, *others in sizes.values() for size in others]
        if copies:
            yield (f"Warning: hard links become separate files ({len(copies)} in all), which take {sum(copies)} more "
                   "bytes")
