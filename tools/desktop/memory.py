"""What a process holds in its memory. Needs root."""
import re
import resource
from pathlib import Path


def can_look():
    """Whether this process has CAP_SYS_PTRACE, which opening another's memory takes."""
    effective, = re.findall(r"^CapEff:\s*(\w+)", Path("/proc/self/status").read_text(), re.M)
    return bool(int(effective, 16) >> 19 & 1)


def copies(pid, pattern):
    """How often the pattern stands in the memory that the process alone can write to."""
    found = 0
    with open(f"/proc/{pid}/mem", "rb", 0) as memory:
        for line in Path(f"/proc/{pid}/maps").read_text().splitlines():
            span, rights = line.split()[:2]
            if rights == "rw-p":
                start, end = (int(each, 16) for each in span.split("-"))
                found += sum(len(re.findall(pattern, run, re.DOTALL)) for run in _runs(memory, start, end))
    return found


def _runs(memory, start, end):
    """The readable bytes between two addresses, in one piece but for guard pages, which nobody can read."""
    run = bytearray()
    while start < end:
        memory.seek(start)
        try:
            piece = memory.read(end - start)  # up to the first guard page
        except OSError:
            yield bytes(run)
            run, piece = bytearray(), bytes(resource.getpagesize())
        else:
            run += piece
        start += len(piece)
    yield bytes(run)
