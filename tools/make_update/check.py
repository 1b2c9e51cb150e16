"""Checks an update file. The result is that of the utility, because tar runs with the same options and limits."""
import os
import re
import resource
import stat

from make_update import record
from make_update.contents import Contents
from make_update.messages import Failure, Refusal, quoted
from make_update.tar import LISTING, Tar, TarError, lines

MEMORY_LIMIT = 1 << 30  # bytes; the headers of an archive can take more
READ = "-z", "--warning=no-unknown-keyword"
# Receives each regular member of that name. tar skips others.
RECEIVE = f"""[ "$TAR_SIZE" -le {record.RECORD_LIMIT} ] || {{
  echo "its member {record.CONTROL} has more than {record.RECORD_LIMIT:,} bytes" >&2
  exit 1
}}
echo "$TAR_SIZE"
exec cat"""
SYSTEM_FAULT = re.compile(
    "Input/output error|Cannot (exec|fork|open)|allocate memory|died with signal|ended with status")


class Invalid(Refusal):
    """The utility would refuse the file."""

    def __init__(self, file, reason):
        super().__init__(f"{quoted(file)}: {reason}; make it with zelto-make-update, or fetch it again")


def check(file):
    """Returns the lines of the report."""
    if not stat.S_ISREG(os.stat(file).st_mode):
        raise Invalid(file, "it is not a regular file")
    if not os.access(file, os.R_OK):
        raise Failure(f"{quoted(file)}: not checked: change its mode or run this as root")
    limit_memory()
    archive = os.path.join(os.getcwd(), file)  # absolute, because tar takes a relative name with ":" for a remote file
    try:
        with Tar(*READ, "-t", *LISTING, "-f", archive) as listing:  # at the same time as read_record
            text = read_record(archive, file)
            contents = Contents(lines(listing.output))
            listing.require_success()
    except TarError as error:
        raise Failure(f"{quoted(file)}: not checked: {error}") from None
    return [*record.report(text), *contents.report()]


def limit_memory():
    """Limits the memory of this process and of each tar."""
    hard = resource.getrlimit(resource.RLIMIT_AS)[1]
    if hard == resource.RLIM_INFINITY or hard > MEMORY_LIMIT:
        resource.setrlimit(resource.RLIMIT_AS, (MEMORY_LIMIT, hard))


def read_record(archive, file):
    """Returns the content of the control member; of the last one if there are several."""
    text = None
    with Tar(*READ, "-x", "-f", archive, "--no-recursion", "--to-command", RECEIVE, record.CONTROL) as tar:
        while size := tar.output.readline():
            text = tar.output.read(int(size))
        try:
            tar.require_success()
        except TarError as error:
            if SYSTEM_FAULT.search(str(error)):
                raise
            raise Invalid(file, str(error)) from None
    if text is None:
        raise Invalid(file, f"its member {record.CONTROL} is not a regular file")
    return text
