"""Odd update files, and what the utility shows of each: product, version and description, or None if it refuses it.

    python3 archives.py FOLDER
        writes them to FOLDER and prints for each a line with its name, a tab, and its texts with "|" or "refused"
"""
import bz2
import gzip
import lzma
import sys
import tarfile
from pathlib import Path

CONTROL = "/tmp/.KVX.Content"
END = bytes(1024)
ZERO_BLOCK = bytes(512)
SHOWN = "P|V|D"
LIMIT = 65_536


def member(name=CONTROL, content=b"a=P\nb=V\nc=D\n", kind=tarfile.REGTYPE, form=tarfile.GNU_FORMAT, **fields):
    """Returns the blocks of a member. size: the size in the header (default: that of the content)."""
    entry = tarfile.TarInfo(name)
    entry.type, entry.size = kind, len(content)
    for field, value in fields.items():
        setattr(entry, field, value)
    return entry.tobuf(form, "utf-8", "surrogateescape") + content + bytes(-len(content) % 512)


def special(kind, target=""):
    return member(content=b"", kind=kind, linkname=target)


def patched(blocks, at, data):
    """Returns the member with other bytes in its header and the right checksum."""
    header = bytearray(blocks[:512])
    header[at:at + len(data)] = data
    header[148:156] = b" " * 8
    header[148:156] = b"%06o\0 " % sum(header)
    return bytes(header) + blocks[512:]


def record(content):
    return gzip.compress(member(content=content) + END)


def packed(*parts):
    return gzip.compress(b"".join(parts) + END)


def header_of_gigabytes(kind):
    part = gzip.compress(bytes(1 << 26))  # gzip accepts several compressed parts in one file
    return gzip.compress(patched(member("x", b"", kind), 124, b"%011o" % (3 << 30))) + part * 48 + packed(member())


def archives():
    """Returns the texts and the bytes of each file by its name."""
    good, other = member(), member("/opt/other", b"text")
    again, large = member(content=b"a=Q\nb=V\nc=D\n"), member(content=bytes(LIMIT + 1))
    folder, link = special(tarfile.DIRTYPE), special(tarfile.SYMTYPE, "/etc/passwd")
    inside = member(CONTROL + "/inside")
    plain = packed(good)
    return {name + ".gz": case for name, case in {
        "plain": (SHOWN, plain),
        # where the control member is
        "last": (SHOWN, packed(other, good)),
        "twice": ("Q|V|D", packed(good, again)),
        "then-folder": (SHOWN, packed(good, folder)),
        "after-folder": (SHOWN, packed(folder, inside, good)),
        "after-link": (SHOWN, packed(link, inside, good)),
        "then-hard-link": (SHOWN, packed(good, other, special(tarfile.LNKTYPE, "/opt/other"))),
        "upward-in-folder": (SHOWN, packed(folder, member(CONTROL + "/../.KVX.Evil"), good)),
        "through-link": (SHOWN, packed(folder, member(CONTROL + "/to", b"", tarfile.SYMTYPE, linkname="/tmp"),
                                       member(CONTROL + "/to/.KVX.Evil"), good)),
        "inside-only": (None, packed(folder, inside)),
        "missing": (None, packed(other)),
        # what its name is
        "relative": (None, packed(member(CONTROL[1:]))),
        "double-slash": (None, packed(member("//tmp/.KVX.Content"))),
        "inner-double-slash": (None, packed(member("/tmp//.KVX.Content"))),
        "dot": (None, packed(member("/tmp/./.KVX.Content"))),
        "upward": (None, packed(member("/opt/../tmp/.KVX.Content"))),
        "pattern": (None, packed(member("/tmp/.KVX.Conten?"))),
        "case": (None, packed(member("/tmp/.kvx.content"))),
        "slash-at-end": (None, packed(patched(good, 0, b"/tmp/.KVX.Content/"))),
        "long-name": (SHOWN, packed(member("////@LongLink", CONTROL.encode() + b"\0", tarfile.GNUTYPE_LONGNAME),
                                    member("/opt/short"))),
        "pax-path": (SHOWN, packed(member("/opt/short", form=tarfile.PAX_FORMAT, pax_headers={"path": CONTROL}))),
        "prefix": (SHOWN, packed(patched(patched(member(".KVX.Content", form=tarfile.USTAR_FORMAT), 345, b"/tmp"),
                                         257, b"ustar\00000"))),
        # what it is
        "folder": (None, packed(folder)),
        "link": (None, packed(link)),
        "hard-link": (None, packed(other, special(tarfile.LNKTYPE, "/opt/other"))),
        "pipe": (None, packed(special(tarfile.FIFOTYPE))),
        "device": (None, packed(special(tarfile.CHRTYPE))),
        "old-type": (SHOWN, packed(patched(good, 156, b"\0"))),
        "contiguous": (SHOWN, packed(member(kind=tarfile.CONTTYPE))),
        "unknown-type": (SHOWN, packed(patched(good, 156, b"Z"))),
        "setuid": (SHOWN, packed(member(mode=0o6777, uid=1, gid=1))),
        "old-format": (SHOWN, packed(patched(good, 257, bytes(8)))),
        # how large it is
        "empty": ("||", record(b"")),
        "largest": ("|".join("PVD"), record(b"a=P\nb=V\nc=D\n".ljust(LIMIT, b"x"))),
        "large": (None, packed(large)),
        "large-then-small": (None, packed(large, good)),
        "small-then-large": (None, packed(good, large)),
        # what its text is
        "without-values": ("||", record(b"P\nV\nD\n")),
        "one-line": ("P||", record(b"a=P")),
        "second-sign": ("P|V|D", record(b"a=P=x\nb=V=\nc=D=y\n")),
        "carriage-returns": (SHOWN, record(b"a=P\r\nb=V\r\nc=D\r\n")),
        "markup": ("<b>P</b>|&amp;|<i>D", record(b"a=<b>P</b>\nb=&amp;\nc=<i>D\n")),
        "not-utf-8": ("\ufffd|V|\ufffdD", record(b"a=\xff\nb=V\nc=\xc3D\n")),
        # what is around it
        "no-end": (SHOWN, gzip.compress(good)),
        "zero-block-after": (SHOWN, packed(good, ZERO_BLOCK, other)),
        "zero-block-before": (None, packed(other, ZERO_BLOCK, good)),
        "second-archive": (SHOWN, plain + packed(again)),
        "parts": (SHOWN, gzip.compress(good[:700]) + gzip.compress(good[700:] + END)),
        "zeros-at-end": (SHOWN, plain + bytes(100)),
        "garbage-at-end": (None, plain + b"garbage"),
        "label": (SHOWN, packed(member("label", b"", b"V"), good)),
        "wrong-header": (None, packed(good, other.replace(b"/opt", b"/OPT", 1), other)),
        "negative-size": (None, packed(patched(good, 124, b"\xff" * 12))),
        "huge-size": (None, packed(good, patched(other, 124, b"\x80" + b"\x7f" * 11))),
        "many-keywords": (SHOWN, packed(member(form=tarfile.PAX_FORMAT, pax_headers={
            f"unknown{number}": "x" for number in range(10_000)}))),
        "name-of-gigabytes": (None, header_of_gigabytes(tarfile.GNUTYPE_LONGNAME)),
        "keyword-of-gigabytes": (None, header_of_gigabytes(tarfile.XHDTYPE)),
        # what is not a gzip-compressed archive
        "cut": (None, plain[:-12]),
        "wrong-sum": (None, plain[:-8] + bytes(4) + plain[-4:]),
        "tar": (None, good + END),
        "xz": (None, lzma.compress(good + END)),
        "bzip2": (None, bz2.compress(good + END)),
        "text": (None, gzip.compress(b"text\n" * 500)),
        "nothing": (None, gzip.compress(b"")),
        "no-bytes": (None, b""),
    }.items()}


if __name__ == "__main__":
    for file, (texts, data) in archives().items():
        Path(sys.argv[1], file).write_bytes(data)
        print(file, "refused" if texts is None else texts, sep="\t")
