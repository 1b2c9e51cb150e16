"""Looks through all younger processes, as any user may, until the input ends. The first line of the
input is what to look for; tells, without that, which held it in their words or environment."""
import contextlib
import os
import select
import sys

needle = sys.stdin.buffer.readline().rstrip(b"\n")
older, found = set(os.listdir("/proc")), set()
print("looking", flush=True)
while not select.select([sys.stdin], [], [], 0)[0]:  # no pause: some processes are gone in a moment
    for pid in set(os.listdir("/proc")) - older:
        for what in "cmdline", "environ":
            with contextlib.suppress(OSError), open(f"/proc/{pid}/{what}", "rb", 0) as file:
                # In one piece: between two reads the process may begin to run another program.
                if needle in (text := file.read(1 << 20)):
                    words = text.replace(needle, b"***").replace(b"\0", b" ").decode(errors="replace")
                    found.add(f"{what}: {words!r}")
print(*found, sep="\n")
