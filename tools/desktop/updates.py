"""Update files for tests and pictures, and what they install."""
import contextlib
import io
import os
import secrets
import shutil
import tarfile
import tempfile
from pathlib import Path

SPECIAL = {"link": tarfile.SYMTYPE, "device": tarfile.CHRTYPE}


def make_update(path, product="Sample", version="1.0", description="A sample update.",
                members={}, record=None, control="/tmp/.KVX.Content"):
    """members: maps each absolute name to (content, mode), (target, "link") or ("", "device"). record: the content
    of the control member (default: product, version and description). control: the name of the control member, or
    None to omit the member."""
    if record is None:
        record = f"product={product}\nversion={version}\ndescription={description}\n".encode()
    with tarfile.open(path, "w:gz", format=tarfile.GNU_FORMAT, compresslevel=1) as archive:
        if control is not None:
            _add(archive, control, record, 0o644)
        for name, (content, mode) in members.items():
            _add(archive, name, content, mode)


def assert_installed(members):
    """Verifies that root has installed the members with their content and mode."""
    for name, (content, mode) in members.items():
        found = os.stat(name)
        assert (found.st_uid, found.st_gid, found.st_mode & 0o7777) == (0, 0, mode), f"{name}: {found}"
        assert Path(name).read_bytes() == content, f"{name}: wrong content"


@contextlib.contextmanager
def shared_folder():
    """A temporary folder that every account can read."""
    # Hexadecimal digits, because a "gz" within a path would start a check before the whole path is typed.
    folder = Path(tempfile.gettempdir(), "zelto-" + secrets.token_hex(4))
    folder.mkdir()
    try:
        folder.chmod(0o755)
        yield folder
    finally:
        shutil.rmtree(folder)


def _add(archive, name, content, mode):
    entry = tarfile.TarInfo(name)
    entry.uname = entry.gname = "root"
    if mode in SPECIAL:
        entry.type, entry.linkname = SPECIAL[mode], content
    else:
        entry.mode, entry.size = mode, len(content)
    archive.addfile(entry, io.BytesIO(content) if entry.size else None)
