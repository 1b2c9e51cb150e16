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
TREE = r"""umask 022; mkdir -p bin lib none; cd bin
echo run >run; echo odd >"$(printf -- '-n $(x) \303\274\t\\n*\033')"
ln run ../twin; ln -s ./../bin/run relative; ln -s /none/./such absolute; touch ../lib/held ../nothing
chown -Rh 65534:65534 ..; chmod 1770 ../none; chmod 4750 run; chmod 600 ./-n*"""


def listing(folder):
    """Of all but what is there twice, by a link of the target."""
    format = ["!", "-path", "./lib*", "!", "-path", "./real*", "-printf", "%P|%m|%U:%G|%l\n"]
    return sorted(subprocess.check_output(["find", ".", *format], cwd=folder, text=True).splitlines())


class Updates(DesktopTest):
    def run_tool(self, *words):
        return subprocess.run([TOOL, *words], capture_output=True, text=True).stdout

    def test_what_the_tool_makes_is_installed_as_it_was(self):
        target = Path("/opt", "zelto-" + secrets.token_hex(4))
        self.addCleanup(shutil.rmtree, target, ignore_errors=True)
        tree, update = self.folder / "tree", self.folder / "made.tgz"
        (tree / target.relative_to("/")).mkdir(parents=True)
        subprocess.run(TREE, shell=True, check=True, cwd=tree / target.relative_to("/"))
        (target / "real").mkdir(parents=True)
        (target / "real").chmod(0o711)
        (target / "lib").symlink_to("real")
        self.run_tool("--product", "Made", "--version", "1", "--description", "As it was.", tree, update)
        utility = self.authenticated(self.account())
        utility.set_text("Patchfile:", str(update))
        utility.shows("Made", "1", "As it was.")
        utility.start()
        utility.outcome()
        tree /= target.relative_to("/")
        self.assertEqual(listing(target), [line.replace("65534:65534", "0:0") for line in listing(tree)])
        subprocess.run(["diff", "-r", "--no-dereference", "-x", "real", "-x", "lib", tree, target], check=True)
        self.assertEqual(((target / "real/held").stat().st_uid, oct((target / "real").stat().st_mode)), (0, "0o40711"))

    def test_check_says_what_the_utility_says(self):
        utility = self.authenticated(self.account())
        self.update("good.GZ", "Gut ü")
        self.update("odd.gz", record=b"x=1\x02=2\r\nnone\ny= 3 \r", members={"/usr/": (b"", 0o755)})
        self.update("twice.gz", members={RECORD: (b"a\nb=2\nc=3", 0o644)})
        self.update("large.gz", record=b"=" * 65537)
        self.update("relative.gz", control=RECORD[1:])
        os.truncate(self.update("cut.gz"), 100)
        for kind in tarfile.SYMTYPE, tarfile.LNKTYPE, tarfile.FIFOTYPE, tarfile.CHRTYPE:
            with tarfile.open(self.folder / f"kind{kind.decode()}.gz", "w:gz") as archive:
                member = tarfile.TarInfo()
                member.name, member.type, member.linkname = RECORD, kind, str(self.folder / "good.GZ")
                archive.addfile(member)
        for file in self.folder.iterdir():
            with self.subTest(file.name):
                Path(RECORD).unlink(missing_ok=True)
                checked = self.run_tool("--check", file).splitlines()
                self.assertFalse(os.path.lexists(RECORD))
                utility.set_text("Patchfile:", "")
                utility.fill("Patchfile:", str(file))
                utility.until(lambda: utility.can_update() or "Cancel" in utility.buttons(MAIN))
                if utility.can_update():
                    said = list(map("{}: {}".format, ("Product", "Version", "Description"), utility.record()))
                else:
                    said = utility.dialog("Keep", "Cancel")[:1]
                    utility.answer("Cancel")
                self.assertEqual([line for line in checked if not line.startswith("Warning")], said)
