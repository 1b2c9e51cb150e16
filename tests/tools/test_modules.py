"""Each source file includes only files of the modules that docs/architecture.md permits."""
import re
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
ROW = re.compile(r"^\| `([a-z/]+)/` \| .* \| (.*) \|$", re.M)
NAMES = {"runtime": "platform/runtime", "Qt": "", "the system": ""}


def permitted():
    rows = dict(ROW.findall((ROOT / "docs/architecture.md").read_text()))
    everything = set(rows) - {"platform/qt"}
    return {module: {module} | (everything if use.startswith("all but") else
                                {NAMES.get(name, name) for name in use.split(", ")}) for module, use in rows.items()}


class Modules(unittest.TestCase):
    def test_includes_follow_the_table(self):
        modules = permitted()
        files = [file for module in modules for file in (ROOT / module).glob("*.[ch]*")]
        self.assertGreater(len(files), 100)
        for file in files:
            user = str(file.parent.relative_to(ROOT))
            for used in re.findall(r'#include "([a-z/]+)/', file.read_text()):
                self.assertIn(used, modules[user], file)
            self.assertTrue(user == "platform/qt" or not re.search("#include <Q", file.read_text()), file)
