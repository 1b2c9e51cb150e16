import os
import subprocess
import unittest


class WithoutDisplay(unittest.TestCase):
    def test_start_fails_with_one_line(self):
        for display in {}, {"DISPLAY": ":9987"}:
            environment = {"PATH": os.environ["PATH"], **display}
            done = subprocess.run([os.environ["ZELTO_PROGRAM"]], env=environment, timeout=30,
                                  stdin=subprocess.DEVNULL, capture_output=True, text=True)
            self.assertEqual((done.returncode, done.stdout), (1, ""))
            self.assertRegex(done.stderr, r"\Azelto-update-utility: no display can be opened: .+\n\Z")
