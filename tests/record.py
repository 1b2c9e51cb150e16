"""The record of the utility, whose path all tests on this machine share."""
import contextlib
import fcntl
import os
from pathlib import Path

RECORD = Path("/tmp/.KVX.Content")


@contextlib.contextmanager
def locked():
    """Keeps other tests from the record. Locks a folder that always exists and that no program locks."""
    folder = os.open("/", os.O_RDONLY)
    try:
        fcntl.flock(folder, fcntl.LOCK_EX)
        yield
    finally:
        os.close(folder)
