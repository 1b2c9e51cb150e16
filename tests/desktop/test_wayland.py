from desktop import wayland
from desktop.utility import AUTHENTICATE, MAIN
from place import PROGRAM, DesktopTest


class Wayland(DesktopTest):
    def test_keyboard_completes_an_update(self):
        if missing := wayland.missing():
            self.skipTest(f"not installed: {', '.join(missing)}")
        account, members = self.account(), self.members(file=(b"new", 0o644))
        path = self.update("a.gz", "Tools", "2.5", "On Wayland.", members)
        with wayland.WaylandUtility(account.name, PROGRAM) as utility:
            utility.window(AUTHENTICATE)
            utility.type(account.password)
            utility.key("Return")
            utility.window(MAIN)
            utility.type(path)
            utility.shows("Tools", "2.5", "On Wayland.")
            utility.until(utility.can_update)
            utility.key("Return")
            utility.outcome()
            self.assert_installed(members)
            utility.answer_by_keyboard("Install Another", default="Quit")
            utility.window(MAIN)
            utility.key("alt+f", "Down", "Return")
            utility.window("About")
            utility.key("Escape")
            utility.window(MAIN)
            utility.key("ctrl+q")
            self.assertEqual(utility.exit_status(), 0)
