"""What a process holds in its memory. Needs root."""
import re
from pathlib import Path


def copies(pid, pattern):
    """How often the pattern stands in the memory that the process alone can write to."""
    found = 0
    with open(f"/proc/{pid}/mem", "rb", 0) as memory:
        for line in Path(f"/proc/{pid}/maps").read_text().splitlines():
            span, rights = line.split()[:2]
            if rights == "rw-p":
                start, end = (int(each, 16) for each in span.split("-"))
                memory.seek(start)
                found += len(re.findall(pattern, memory.read(end - start), re.DOTALL))
    return found
