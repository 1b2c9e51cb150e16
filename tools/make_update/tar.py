"""Runs tar, which alone decides what an archive contains."""
import os
import signal
import subprocess
import threading

LISTING = "-vv", "--numeric-owner", "--quoting-style=c"
LINE_LIMIT = 1 << 16  # bytes; a line with the longest name that can be installed is shorter
MESSAGE_LIMIT = 9


def lines(stream):
    """Yields the lines of a stream. Only the first 64 KiB of a line are read into memory."""
    while line := stream.readline(LINE_LIMIT):
        yield line.decode("ascii", "replace")
        while line and not line.endswith(b"\n"):
            line = stream.readline(LINE_LIMIT)


class TarError(Exception):
    """tar has failed. The arguments are its messages."""

    def __str__(self):
        return self.args[0]


class Tar:
    """A running tar, as a context manager: it is killed at the end of the block if it still runs."""

    def __init__(self, *arguments, **options):
        self._process = subprocess.Popen(["tar", "-P", *arguments], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                         process_group=0, **options)
        self.output = self._process.stdout
        self._messages = []
        self._collector = threading.Thread(target=self._collect, daemon=True)
        self._collector.start()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self._process.poll() is None:
            os.killpg(self._process.pid, signal.SIGKILL)  # with gzip
            self._process.wait()

    def _collect(self):
        for line in lines(self._process.stderr):
            if line.strip() and len(self._messages) < MESSAGE_LIMIT:
                self._messages.append(line.strip())

    def require_success(self):
        """Waits for the end. Raises TarError if tar has failed."""
        status = self._process.wait()
        self._collector.join()
        if status:
            raise TarError(*self._messages, f"tar ended with status {status}")
