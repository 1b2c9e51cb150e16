"""Compares the utility with the minimal cost of its commands and of Qt: bench.py BUILD_DIR [--check] (as root).
Prints a table and writes results.json to BUILD_DIR."""
import contextlib
import json
import os
import secrets
import shutil
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "tools"))
from desktop import signals
from desktop.accounts import Account
from desktop.display import Desktop
from desktop.updates import make_update
from startup import Stopwatch, peak

ROUNDS = 9
MEMORY_DISK = "/dev/shm"


class Table:
    def __init__(self):
        self.rows = []

    def add(self, work, unit, values, target):
        """Adds a row from the values of all rounds."""
        low, middle, high = statistics.quantiles(values, n=4) if len(values) > 1 else [values[0]] * 3
        self.rows.append({"work": work, "unit": unit, "median": round(middle, 4), "spread": round((high - low) / 2, 4),
                          "target": target, "rounds": len(values)})
        print(self.line(self.rows[-1]), flush=True)

    def ratio(self, work, target, ours, theirs):
        """Runs both measurements in each round, in alternating order, so that other load affects both."""
        pairs = []
        for turn in range(ROUNDS):
            if turn % 2:
                mine, other = ours(), theirs()
            else:
                other, mine = theirs(), ours()
            pairs.append(mine / other)
        self.add(work, "ratio", pairs, target)

    def missed(self):
        return [row for row in self.rows if row["median"] - row["spread"] > row["target"]]

    @staticmethod
    def line(row):
        return (f"| {row['work']} | {row['median']:.4g} | ± {row['spread']:.2g} | at most {row['target']:g} "
                f"| {row['unit']} | {row['rounds']} |")


class MeasuredUtility:
    """The program bench-work: the utility, controlled by requests. It answers with measured times."""

    def __init__(self, desktop, account):
        self._program = desktop.launch([desktop.copy_of("bench-work")], stdin=subprocess.PIPE,
                                       stdout=subprocess.PIPE, text=True, bufsize=1)
        self._answer()
        self.ask("account", account.name, account.password)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._program.kill()
        self._program.wait()
        self._program.stdin.close()
        self._program.stdout.close()

    def ask(self, *request):
        print("\t".join(map(str, request)), file=self._program.stdin)
        answer = self._answer()
        if answer.get("status") or answer.get("enabled") == 0:
            raise RuntimeError(f"{request[0]}: {answer}")
        return answer

    @property
    def pid(self):
        return self._program.pid

    def _answer(self):
        line = self._program.stdout.readline()
        if not line:
            raise RuntimeError("the program has ended")
        return json.loads(line)


class Updates:
    """Update files and their target folder in a memory file system."""

    def __init__(self, folder):
        self.folder = folder
        self.target = folder / "target"
        block = os.urandom(1 << 20)  # gzip finds no repetition, because the block is larger than the window of gzip
        self.small = self._make("small", {f"{self.target}/{name}": (name.encode() * 100, 0o644) for name in "abcde"})
        self.large = self._make("large", {f"{self.target}/{name}": (block * 100, 0o644) for name in "abcd"})
        self.many = self._make("many", self.members(30_000, b"A file of an update.\n" * 20))
        self._empty = {}

    def members(self, count, content=b""):
        return {f"{self.target}/{number // 1000}/file-{number}": (content, 0o644) for number in range(count)}

    def empty(self, count):
        if count not in self._empty:
            self._empty[count] = self._make(f"empty-{count}", self.members(count))
        return self._empty[count]

    def clear(self):
        shutil.rmtree(self.target, ignore_errors=True)

    def package(self):
        """A Debian package with the same files as the update with many files."""
        tree = self.folder / "tree"
        (tree / "DEBIAN").mkdir(parents=True)
        (tree / "DEBIAN/control").write_text(
            "Package: zelto-many\nVersion: 1\nArchitecture: all\nMaintainer: nobody\nDescription: many files\n")
        for name, (content, _) in self.members(30_000, b"A file of an update.\n" * 20).items():
            path = tree / name.lstrip("/")
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(content)
        package = self.folder / "many.deb"
        subprocess.run(["dpkg-deb", "-Zgzip", "--build", tree, package], check=True, stdout=subprocess.DEVNULL)
        shutil.rmtree(tree)
        return package

    def _make(self, name, members):
        path = self.folder / f"{name}.tar.gz"
        make_update(path, members=members, level=1)
        return path


def measure_start(table, desktop):
    stopwatch = Stopwatch(desktop)
    results = {"bench-smallest": [], "zelto-update-utility": []}
    for name in results:
        stopwatch.time(name)  # loads the program from the disk into the cache
    for turn in range(4 * ROUNDS + 1):
        for name in sorted(results, reverse=turn % 2):
            results[name].append(stopwatch.time(name))
    smallest, ours = results.values()
    table.add("time from start until a dialog accepts keys / smallest program", "ratio",
              [mine[0] / other[0] for mine, other in zip(ours, smallest)], 1.10)
    table.add("peak memory until a dialog accepts keys / smallest program", "ratio",
              [mine[1] / other[1] for mine, other in zip(ours, smallest)], 1.15)
    return statistics.median(memory for _, memory in smallest)


def measure_authentication(table, desktop, account):
    def timed(request):
        with MeasuredUtility(desktop, account) as utility:
            time.sleep(0.5)  # the minimal time to type a password
            return utility.ask(request)["ms"]
    table.ratio("time from right password to main window / two commands in sh", 1.15,
                lambda: timed("authenticate"), lambda: timed("authenticate lines"))


def measure_commands(table, utility, updates):
    def timed(request, path):
        updates.clear()
        return utility.ask(request, path)["ms"]

    def compare(work, target, request, path):
        table.ratio(work, target, lambda: timed(request, path), lambda: timed(f"{request} lines", path))

    compare("check of a small file / three commands in sh", 1.05, "check", updates.small)
    compare("check of 400 MB / three commands in sh", 1.01, "check", updates.large)
    compare("installation of 30,000 small files / three commands in sh", 1.03, "install", updates.many)
    compare("installation of 400 MB in 4 files / three commands in sh", 1.02, "install", updates.large)
    package = updates.package()
    table.ratio("installation of 30,000 small files / dpkg -i", 0.4,
                lambda: timed("install", updates.many), lambda: dpkg(updates, package))


def dpkg(updates, package):
    updates.clear()
    root = updates.folder / "root"
    shutil.rmtree(root, ignore_errors=True)
    for name in ("updates", "info"):
        (root / "var/lib/dpkg" / name).mkdir(parents=True)
    (root / "var/lib/dpkg/status").touch()
    start = time.perf_counter()
    subprocess.run(["dpkg", f"--root={root}", "-i", package], check=True, capture_output=True)
    return 1000 * (time.perf_counter() - start)


def measure_liveliness(table, utility, updates):
    def install():
        updates.clear()
        return utility.ask("watched install", updates.empty(200_000))
    watched = [install() for _ in range(ROUNDS)]
    table.add("time from end of command until outcome shows", "ms", [each["outcome"] for each in watched], 15)
    table.add("longest gap of the event loop, 200,000 members", "ms", [each["gap"] for each in watched], 20)
    table.add("failure dialog with 10 MB of text, creation to display", "ms",
              [utility.ask("failure")["ms"] for _ in range(ROUNDS)], 300)


def measure_idleness(table, desktop, utility):
    def wake_ups():
        """Counts wake-ups: the pauses of more than 0.1 seconds between two system calls."""
        time.sleep(2)
        with tempfile.NamedTemporaryFile() as calls:
            with contextlib.suppress(subprocess.TimeoutExpired):
                subprocess.run(["strace", "-f", "-ttt", "-o", calls.name, "-p", str(utility.pid)],
                               timeout=10, stderr=subprocess.DEVNULL)
            times = sorted(float(line.split()[1]) for line in calls.read().decode().splitlines())
        return sum(later - earlier > 0.1 for earlier, later in zip(times, times[1:]))
    table.add("wake-ups in 10 s, main window in front (its caret changes 20 times)", "count", [wake_ups()], 21)
    desktop.manager.steal_focus()
    table.add("wake-ups in 10 s, another window in front", "count", [wake_ups()], 0)


def measure_millions(table, desktop, account, updates, smallest):
    def peak_after(count):
        updates.clear()
        with MeasuredUtility(desktop, account) as utility:
            utility.ask("authenticate")
            utility.ask("install", updates.empty(count))
            return peak(utility.pid)
    table.add("peak memory after 100,000 members / smallest program", "ratio",
              [peak_after(100_000) / smallest for _ in range(3)], 1.20)
    table.add("peak memory after 1,000,000 members, minus that after 1,000 members", "KiB",
              [peak_after(1_000_000) - peak_after(1_000) for _ in range(3)], 1024)
    with MeasuredUtility(desktop, account) as utility:
        utility.ask("authenticate")

        def timed(request):
            updates.clear()
            return utility.ask(request, updates.empty(1_000_000))["ms"]
        table.ratio("installation of 1,000,000 empty members / three commands in sh", 1.03,
                    lambda: timed("install"), lambda: timed("install lines"))


def main(build, *options):
    signals.clean_up_on_signals()
    build = Path(build)
    table = Table()
    print("| work | median | spread | target | unit | rounds |\n|---|---|---|---|---|---|")
    with contextlib.ExitStack() as undo:
        folder = Path(undo.enter_context(tempfile.TemporaryDirectory(dir=MEMORY_DISK, prefix="zelto-bench-")))
        folder.chmod(0o755)
        undo.callback(Path("/tmp/.KVX.Content").unlink, missing_ok=True)
        updates = Updates(folder)
        account = undo.enter_context(Account(secrets.token_hex(8)))
        desktop = undo.enter_context(Desktop(account.name, build / "bin/zelto-update-utility"))
        smallest = measure_start(table, desktop)
        measure_authentication(table, desktop, account)
        with MeasuredUtility(desktop, account) as utility:
            utility.ask("authenticate")
            measure_commands(table, utility, updates)
            measure_liveliness(table, utility, updates)
            measure_idleness(table, desktop, utility)
        measure_millions(table, desktop, account, updates, smallest)
    (build / "results.json").write_text(json.dumps(table.rows, indent=2) + "\n")
    missed = table.missed()
    for row in missed:
        print(f"bench: missed: {row['work']}", file=sys.stderr)
    sys.exit(1 if missed and "--check" in options else 0)


if __name__ == "__main__":
    main(*sys.argv[1:])
