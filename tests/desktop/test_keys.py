from desktop.updates import assert_installed
from desktop.utility import AUTHENTICATE, MAIN, PASSWORD_FIELD, Utility
from base import PROGRAM, DesktopTest


class Keys(DesktopTest):
    def hold_return(self, utility, *buttons):
        """Holds Return for 8 seconds. Expects that the dialog with the buttons opens once and stays open."""
        utility.xdotool("keydown", "Return")
        if buttons:
            utility.dialog(*buttons, limit=30)
            opened = utility.xdotool("getactivewindow")
        utility.xdotool("sleep", 8, "keyup", "Return")
        if buttons:
            self.assertEqual(sorted(utility.buttons(MAIN)), sorted(buttons))
            self.assertEqual(utility.xdotool("getactivewindow"), opened)

    def test_return_held_down_presses_nothing_twice(self):
        account = self.account()
        utility = self.enterContext(Utility(account.name, PROGRAM))
        utility.window(AUTHENTICATE)
        for password in "wrong", account.password:
            utility.fill("Name:", account.name)
            utility.fill(PASSWORD_FIELD, password)
            self.hold_return(utility)
            if password == "wrong":  # two attempts remain
                self.assertTrue(utility.description(PASSWORD_FIELD))
                utility.until(lambda: utility.click("Name:") or utility.state("Name:")["focused"])
                utility.try_pair(account.name, "wrong")
                utility.refusal()
        utility.window(MAIN)
        # A failure with a long text: the members are below a regular file.
        (self.folder / "file").touch()
        members = {f"{self.folder}/file/{number}": (b"", 0o644) for number in range(30)}
        utility.check(self.update("fails.gz", members=members))
        self.hold_return(utility, "OK")
        utility.answer("OK")
        members = self.members(file=(b"new", 0o644))
        utility.fill("Patchfile:", self.update("good.gz", "Sample", "2.0", members=members))
        utility.shows("Sample", "2.0", "A sample update.")
        self.hold_return(utility, "Quit", "Install Another")
        assert_installed(members)
        utility.answer("Install Another")
        utility.fill("Patchfile:", self.update("bad.gz", record=bytes(1 << 20))[:-1])
        utility.xdotool("key", "z")
        self.hold_return(utility, "Keep", "Cancel")

    def test_description_can_be_copied_and_not_edited(self):
        utility = self.authenticated(self.account())
        utility.check(self.update("a.gz"))
        utility.click("Description")
        utility.until(lambda: utility.state("Description")["focused"])
        utility.key("ctrl+a", "ctrl+c", "ctrl+x", "Delete", "ctrl+v", "ctrl+z")
        utility.fill("Patchfile:", "")
        utility.until(lambda: utility.key("ctrl+v") or "A sample update." in utility.text("Patchfile:"))
        self.assertEqual(utility.text("Description"), "A sample update.")
