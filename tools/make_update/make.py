"""Makes an update file from a directory tree."""
import hashlib
import os
import re
import tempfile

from make_update import record
from make_update.contents import Contents
from make_update.messages import Failure, Refusal, quoted
from make_update.tar import LISTING, Tar, TarError, lines
from make_update.tree import Tree

CONTROL_TIME = 946_684_800  # the year 2000; tar warns of times near 1970
# Hard links become separate files, because a hard link cannot connect two file systems of the target.
FORMAT = ("-I", "gzip -n", "--format=gnu", "--owner=root:0", "--group=root:0", "--hard-dereference", "--no-recursion",
          "--show-transformed-names", "--transform", rf"s,^control$,{record.CONTROL},S;s,^\./,/,S")


def make(texts, folder, file):
    """Makes the file and returns the lines of the report."""
    times = time_options(os.environ.get("SOURCE_DATE_EPOCH"))
    text = record.new_record(texts)
    tree, parent = read_tree(folder), os.path.realpath(os.path.dirname(file))
    tree.require_rules()
    try:
        require_place(tree, parent, file)
        with tempfile.TemporaryDirectory(prefix=os.path.basename(file) + ".", dir=parent) as work:
            contents = write_archive(tree, text, times, work)
            with open(f"{work}/archive", "rb") as archive:
                checksum = hashlib.file_digest(archive, "sha256").hexdigest()
            os.replace(f"{work}/archive", file)
    except (OSError, TarError) as error:
        raise Failure(f"{quoted(file)}: not made: {getattr(error, 'strerror', error)}{remedy(str(error))}") from None
    return [*record.report(text), *contents.report(), *tree.losses(), checksum_line(checksum, file)]


def time_options(latest):
    if latest and not re.fullmatch("[0-9]{1,11}", latest):
        raise Failure(f"SOURCE_DATE_EPOCH={latest}: give seconds since 1970, with at most 11 digits")
    return [f"--mtime=@{latest}", "--clamp-mtime"] if latest else []


def read_tree(folder):
    if not folder:
        raise Failure("the name of the DIRECTORY is empty; see --help")
    if not os.path.isdir(folder):
        raise Failure(f"{quoted(folder)}: not an accessible directory; give another")
    if os.path.samefile(folder, "/"):
        raise Refusal(f"{quoted(folder)}: it is the root directory; give a copy of the files to install")
    try:
        return Tree(os.path.join(os.getcwd(), folder))
    except FileNotFoundError as error:
        raise Failure(f"{quoted(error.filename)}: it has vanished; do not change the tree meanwhile") from None


def remedy(reason):
    return "; do not change the tree meanwhile" if 'tar: "./' in reason else ""


def require_place(tree, parent, file):
    if os.path.isdir(file):
        raise Refusal(f"{quoted(file)}: it is a directory; give another name")
    if tree.contains(parent):
        raise Refusal(f"{quoted(file)}: it is inside the tree; choose a path outside")


def write_archive(tree, text, times, work):
    control = f"{work}/control"
    with open(control, "wb") as stream:
        stream.write(text)
    os.chmod(control, 0o644)
    os.utime(control, (CONTROL_TIME, CONTROL_TIME))
    with open(f"{work}/list", "w+b") as members:
        members.write(tree.member_list())
        members.seek(0)
        with Tar("-c", "-f", "archive", *FORMAT, *times, *LISTING, "control", "-C", tree.folder, "--null", "-T", "-",
                 cwd=work, stdin=members) as tar:
            contents = Contents(lines(tar.output))
            tar.require_success()
    return contents


def checksum_line(checksum, file):
    """Returns a line for sha256sum -c, with the escape sequences of sha256sum."""
    escaped = file.replace("\\", "\\\\").replace("\n", "\\n").replace("\r", "\\r")
    return ("\\" if escaped != file else "") + f"{checksum}  {escaped}"
