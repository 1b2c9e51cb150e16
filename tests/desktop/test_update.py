import os

from desktop.updates import assert_installed
from desktop.wait import until
from base import DesktopTest


class Install(DesktopTest):
    def test_typed_dropped_and_chosen_files_install(self):
        account, markers, touch = self.account(), self.folder / "markers", f"touch {self.folder}/markers/"
        markers.mkdir()
        markers.chmod(0o777)
        odd = self.folder / (f"a  b \\ $HOME $({touch}1)`{touch}2`;{touch}3;';{touch}4;'\"\";{touch}5;"
                             f"\"$({touch}6)\";{touch}7;'\\';{touch}8;\\\";{touch}9; # ")
        odd.parent.mkdir(parents=True)
        kinds = self.members(**{
            "program": (b"#!/bin/sh\necho new\n", 0o755), "nested/in a new/folder": (b"\0\xff\n", 0o640),
            "empty": (b"", 0o600), "größe 漢": (b"name", 0o666)})
        many = self.members(**{f"many/{number}": (b"%d" % number, 0o644) for number in range(20_000)})
        again = self.members(program=(b"#!/bin/sh\necho newer\n", 0o700))
        utility = self.authenticated(account)
        idle = account.processes()
        for way, name, members, enter in [("typed", odd, kinds, lambda path: utility.fill("Patchfile:", path)),
                                          ("dropped", "ü b", many, lambda path: utility.drop(path, "Patchfile:")),
                                          ("chosen", "chosen", again, utility.choose)]:
            path = self.update(f"{name}.tar.gz", f"Tools, {way}", "2.5", f"What was {way}.", members)
            enter(path)
            utility.shows(f"Tools, {way}", "2.5", f"What was {way}.")
            self.assertEqual(utility.text("Patchfile:"), path)
            utility.start()
            utility.outcome()
            assert_installed(members)
            if way != "chosen":
                utility.answer("Install Another")
        utility.quit()
        until(lambda: account.processes() <= idle, 10, lambda: "something is left running")
        self.assertEqual(os.listdir(markers), [], "a part of the path was run")
