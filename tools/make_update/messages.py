"""Reasons for which the command ends, and names in messages."""
import itertools
import os
import shlex


class Failure(Exception):
    """The options or the system are at fault. No file is accepted or refused."""
    status = 1


class Refusal(Failure):
    """The tree, a text or the update file is refused."""
    status = 2


class Interruption(BaseException):
    """A signal ends the command. The argument is its number."""


def quoted(name):
    """Quotes a name for the shell if necessary, as ls does. The result is printable."""
    runs = ((printable, "".join(run)) for printable, run in itertools.groupby(name, str.isprintable))
    return "".join(shlex.quote(run) if printable else _octal(run) for printable, run in runs)


def _octal(text):
    return "$'" + "".join(f"\\{byte:03o}" for byte in os.fsencode(text)) + "'"
