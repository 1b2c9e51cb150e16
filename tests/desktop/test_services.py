import os

from desktop.utility import AUTHENTICATE, PASSWORD_FIELD, Utility
from base import PROGRAM, DesktopTest


class Portal(DesktopTest):
    def test_file_dialog_of_the_portal_opens_and_memory_is_hidden(self):
        account = self.account()
        path = self.update("chosen.tar.gz", "Chosen", "3", "In the dialog of the portal.")
        environment = {"QT_QPA_PLATFORMTHEME": "xdgdesktopportal", "QDBUS_DEBUG": "1"}
        utility = self.enterContext(Utility(account.name, PROGRAM, environment=environment))
        utility.window(AUTHENTICATE)
        utility.key("x")
        utility.until(lambda: utility.state(PASSWORD_FIELD)["focused"])
        self.assertEqual(os.stat(f"/proc/{utility.pid()}/mem").st_uid, 0)
        utility.authenticate(account.name, account.password)
        # The toolkit's log of the bus has the portal's answers.
        log = utility.log()
        self.assertTrue("ReadAll" in log and "Portal operation not allowed" not in log)
        utility.click("Choose update file")
        # The dialog belongs to the portal's process, so the driver does not see it.
        dialog = "search", "--onlyvisible", "--name", "^Open$"
        utility.until(lambda: utility.xdotool(*dialog))
        utility.xdotool(*dialog, "windowactivate", "--sync")
        utility.xdotool("key", "ctrl+l")
        utility.xdotool("type", path)
        # The dialog ignores the key until it has looked the path up.
        utility.until(lambda: not utility.xdotool(*dialog) or utility.xdotool("key", "Return"))
        utility.shows("Chosen", "3", "In the dialog of the portal.")
