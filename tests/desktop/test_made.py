import secrets
import shutil
import subprocess
from pathlib import Path

from place import DesktopTest

TOOL = Path(__file__).resolve().parents[2] / "tools/zelto-make-update"
TREE = r"""umask 022; mkdir -p bin lib none; cd bin
echo run >run; echo odd >"$(printf -- '-n $(x) \303\274\t\\n*\033')"
ln run ../twin; ln -s ./../bin/run relative; ln -s /none/./such absolute; touch ../lib/held ../nothing
chown -Rh 65534:65534 ..; chmod 1770 ../none; chmod 4750 run; chmod 600 ./-n*"""


def listing(folder):
    """The entries of the folder. Excludes lib and real: on the target, lib is a link to real."""
    format = ["!", "-path", "./lib*", "!", "-path", "./real*", "-printf", "%P|%m|%U:%G|%l\n"]
    return sorted(subprocess.check_output(["find", ".", *format], cwd=folder, text=True).splitlines())


class Updates(DesktopTest):
    def test_made_update_installs_the_same_tree(self):
        target = Path("/opt", "zelto-" + secrets.token_hex(4))
        self.addCleanup(shutil.rmtree, target, ignore_errors=True)
        tree, update = self.folder / "tree", self.folder / "made.tgz"
        (tree / target.relative_to("/")).mkdir(parents=True)
        subprocess.run(TREE, shell=True, check=True, cwd=tree / target.relative_to("/"))
        (target / "real").mkdir(parents=True)
        (target / "real").chmod(0o711)
        (target / "lib").symlink_to("real")
        subprocess.run([TOOL, "--product", "Made", "--version", "1", "--description", "As it was.", tree, update],
                       check=True, stdout=subprocess.DEVNULL)
        utility = self.authenticated(self.account())
        utility.set_text("Patchfile:", str(update))
        utility.shows("Made", "1", "As it was.")
        utility.start()
        utility.outcome()
        tree /= target.relative_to("/")
        self.assertEqual(listing(target), [line.replace("65534:65534", "0:0") for line in listing(tree)])
        subprocess.run(["diff", "-r", "--no-dereference", "-x", "real", "-x", "lib", tree, target], check=True)
        self.assertEqual(((target / "real/held").stat().st_uid, oct((target / "real").stat().st_mode)), (0, "0o40711"))
