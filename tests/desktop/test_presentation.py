import functools

from desktop.nested import NestedUtility
from desktop.updates import assert_installed
from desktop.utility import AUTHENTICATE, MAIN, Utility
from base import PROGRAM, DesktopTest
from record import RECORD


class Keyboard(DesktopTest):
    UTILITY = Utility

    def test_keyboard_alone_completes_an_update(self):
        account = self.account()
        utility = self.enterContext(self.UTILITY(account.name, PROGRAM))
        utility.window(AUTHENTICATE)
        utility.key("shift+Tab", "ctrl+a")
        utility.type(f"{account.name}\t{account.password}")
        utility.key("Return")
        utility.window(MAIN)
        with utility.about():
            pass
        utility.type(self.update("huge.gz", record=bytes(1 << 20)))
        utility.dialog("Keep", "Cancel")
        self.assertFalse(RECORD.exists())
        utility.until(lambda: utility.key("Escape") or "Keep" not in utility.buttons(MAIN))
        for name, way, answer in ("first", ["Return"], "Install Another"), ("2", ["Tab", "Tab", "Return"], "Quit"):
            members = self.members(**{name: (b"new", 0o644)})
            utility.until(lambda: utility.text("Patchfile:") == "")
            utility.type(self.update(f"{name}.gz", members=members))
            utility.until(utility.can_update)
            utility.key(*way)
            utility.outcome()
            assert_installed(members)
            utility.answer_by_keyboard(answer, default="Install Another")
        self.assertEqual(utility.exit_status(), 0)


class Wayland(Keyboard):
    UTILITY = staticmethod(functools.partial(NestedUtility, "sway"))


class Speech(DesktopTest):
    def test_windows_dialogs_waits_and_status_are_readable(self):
        account = self.account()
        utility = self.enterContext(Utility(account.name, PROGRAM))
        utility.listen("object:property-change:accessible-name")
        utility.window(AUTHENTICATE)
        self.assertEqual(utility.roles(AUTHENTICATE)[0], "dialog")
        utility.authenticate(account.name, account.password)
        self.assertIn(utility.roles(MAIN)[0], ("frame", "window"))
        utility.fill("Patchfile:", self.update("bad.gz", control=None))
        self.assertEqual(utility.dialog("Keep", "Cancel")[0], "Invalid Update File")
        self.assertEqual(utility.roles(MAIN)[0], "dialog")
        self.assertEqual([utility.state(button)["default"] for button in ("Keep", "Cancel")], [False, True])
        utility.answer("Cancel")
        late = self.members(zeros=(bytes(600 << 20), 0o644)) | {str(RECORD): (b"product=Late\n", 0o644)}
        utility.fill("Patchfile:", self.update("late.gz", control=None, members=late))
        utility.until(lambda: "progress bar" in utility.roles(MAIN))
        utility.until(lambda: utility.record()[0] == "Late", 60)
        self.assertNotIn("progress bar", utility.roles(MAIN))
        utility.fill("Patchfile:", "")
        utility.install(self.update("a.gz"))
        utility.outcome()
        self.assertLess({"Installing Update...", "Update completed successfully"}, dict(utility.heard()).keys())
