import os
import secrets
import shutil
import subprocess
import tarfile
from pathlib import Path

from desktop.utility import MAIN
from place import DesktopTest

TOOL = Path(__file__).resolve().parents[2] / "tools/zelto-make-update"
RECORD = "/tmp/.KVX.Content"


def snapshot(root):
    """Owner, mode and content of all below it but the folders that hold something."""
    def told(path):
        found = path.lstat()
        content = os.readlink(path) if path.is_symlink() else path.is_file() and path.read_bytes()
        return found.st_uid, found.st_gid, oct(found.st_mode), content
    return {str(path.relative_to(root)): told(path) for path in root.rglob("*")
            if path.is_symlink() or path.is_file() or not os.listdir(path)}


class Updates(DesktopTest):
    def test_what_the_tool_makes_is_installed_as_it_was(self):
        target = Path("/opt", "zelto-" + secrets.token_hex(4))
        self.addCleanup(shutil.rmtree, target, ignore_errors=True)
        tree = self.folder / "tree" / target.relative_to("/")
        files = {"bin/run": 0o755, "set-user-id": 0o4750, "-n $(x) 'ü'\t\\n*\x1b": 0o600, "lib/held": 0o666}
        for name, mode in files.items():
            (tree / name).parent.mkdir(parents=True, exist_ok=True)
            (tree / name).write_text(name)
            (tree / name).chmod(mode)
        (tree / "nothing").touch()
        (tree / "none").mkdir()
        (tree / "none").chmod(0o1770)
        os.link(tree / "bin/run", tree / "twin")
        (tree / "relative").symlink_to("./bin/../run")
        (tree / "absolute").symlink_to("/none/./such")
        expected = snapshot(tree)
        expected["real/held"], expected["lib"] = expected.pop("lib/held"), (0, 0, "0o120777", "real")
        for path in tree.rglob("*"):
            mode = path.lstat().st_mode & 0o7777
            os.chown(path, 65534, 65534, follow_symlinks=False)
            path.is_symlink() or path.chmod(mode)  # which loses its set-user-ID bit with its owner
        (target / "real").mkdir(parents=True)
        (target / "real").chmod(0o711)
        (target / "lib").symlink_to("real")
        update = self.folder / "made.tgz"
        subprocess.run([TOOL, "--product", "Made", "--version", "1", "--description", "As it was.", self.folder / "tree",
                        update], check=True, capture_output=True)
        utility = self.authenticated(self.account())
        utility.set_text("Patchfile:", str(update))
        utility.shows("Made", "1", "As it was.")
        utility.start()
        utility.outcome()
        self.assertEqual(snapshot(target), expected)
        self.assertEqual(oct((target / "real").stat().st_mode), "0o40711")

    def test_check_says_what_the_utility_says(self):
        utility = self.authenticated(self.account())
        self.update("good.GZ", "Gut ü")
        self.update("odd.gz", record=b"x=1\x02=2\r\nnone\ny= 3 \r", members={"/usr/": (b"", 0o755)})
        self.update("twice.gz", members={RECORD: (b"a\nb=2\nc=3", 0o644)})
        self.update("large.gz", record=b"=" * 65537)
        self.update("relative.gz", control=RECORD[1:])
        os.truncate(self.update("cut.gz"), 100)
        (self.folder / "text.gz").write_text("none")
        for kind in tarfile.SYMTYPE, tarfile.LNKTYPE, tarfile.FIFOTYPE, tarfile.CHRTYPE:
            with tarfile.open(self.folder / f"kind{kind.decode()}.gz", "w:gz") as archive:
                member = tarfile.TarInfo()
                member.name, member.type, member.linkname = RECORD, kind, str(self.folder / "text.gz")
                archive.addfile(member)
        files = sorted(self.folder.glob("*.*"))
        self.assertEqual(len(files), 11)
        for file in files:
            with self.subTest(file.name):
                Path(RECORD).unlink(missing_ok=True)
                checked = subprocess.run([TOOL, "--check", file], capture_output=True, text=True).stdout
                self.assertFalse(os.path.lexists(RECORD))
                utility.set_text("Patchfile:", "")
                utility.fill("Patchfile:", str(file))
                utility.until(lambda: utility.can_update() or "Cancel" in utility.buttons(MAIN))
                if utility.can_update():
                    product, version, description = utility.record()
                    said = [f"Product: {product}", f"Version: {version}", f"Description: {description}"]
                else:
                    said = utility.dialog("Keep", "Cancel")[:1]
                    utility.answer("Cancel")
                self.assertEqual([line for line in checked.splitlines() if not line.startswith("Warning")], said)
