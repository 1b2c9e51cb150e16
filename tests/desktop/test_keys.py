from desktop.updates import assert_installed
from desktop.utility import AUTHENTICATE, MAIN, PASSWORD_FIELD, Utility
from base import PROGRAM, DesktopTest


class Keys(DesktopTest):
    def hold_return(self, utility, *buttons):
        """Holds Return for 8 seconds. Expects that the dialog with the buttons opens once and stays open."""
        utility.xdotool("keydown", "Return")
        try:
            if buttons:
                utility.dialog(*buttons, limit=30)
                opened = utility.manager.window(MAIN)
            utility.xdotool("sleep", 8)
        finally:
            utility.xdotool("keyup", "Return")
        if buttons:
            self.assertEqual(sorted(utility.buttons(MAIN)), sorted(buttons))
            self.assertEqual(utility.manager.window(MAIN), opened)

    def failing_update(self):
        """Makes an update whose failure has a long text: its members are below a regular file."""
        (self.folder / "file").touch()
        return self.update("fails.gz", members={f"{self.folder}/file/{number}": (b"", 0o644) for number in range(30)})

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
        utility.fill("Patchfile:", self.failing_update())
        utility.until(utility.can_update)
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

    def test_every_field_can_be_copied_and_pasted(self):
        utility = self.authenticated(self.account())

        def copy(field):
            utility.click(field)
            utility.until(lambda: utility.state(field)["focused"])
            utility.key("ctrl+a", "ctrl+c")

        def pasted():
            utility.fill("Patchfile:", "")
            return utility.until(lambda: utility.key("ctrl+v") or utility.text("Patchfile:"))

        path = self.failing_update()
        utility.fill("Patchfile:", path)
        utility.until(utility.can_update)
        copy("Description")
        self.assertIn("A sample update.", pasted())
        utility.fill("Patchfile:", "")  # disables Update, which shows below when the check has ended
        utility.fill("Patchfile:", path)
        utility.until(utility.can_update)
        copy("Patchfile:")
        self.assertIn(path, pasted())
        utility.start()
        utility.dialog("OK")
        utility.xdotool("sleep", 1)  # a new dialog ignores keys for a moment
        copy("Explanation")  # several lines, which the field would refuse
        utility.answer("OK")
        self.assertEqual(utility.text("Patchfile:"), path)
