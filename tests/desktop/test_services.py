import os

from desktop.utility import AUTHENTICATE, PASSWORD_FIELD, Utility
from place import PROGRAM, DesktopTest


class Portal(DesktopTest):
    def test_file_dialog_of_the_portal_opens_and_memory_is_hidden(self):
        account = self.account()
        path = self.update("chosen.tar.gz", "Chosen", "3", "In the dialog of the portal.")
        environment = {"QT_QPA_PLATFORMTHEME": "xdgdesktopportal"}
        utility = self.enterContext(Utility(account.name, PROGRAM, environment=environment))
        utility.window(AUTHENTICATE)
        utility.key("x")
        utility.until(lambda: utility.state(PASSWORD_FIELD)["focused"])
        self.assertEqual(os.stat(f"/proc/{utility.pid()}/mem").st_uid, 0)
        utility.authenticate(account.name, account.password)
        utility.click("Choose update file")
        # The dialog belongs to the portal's process, so the driver does not see it.
        dialog = "search", "--onlyvisible", "--name", "^Open$"
        utility.until(lambda: utility.hand(*dialog))
        utility.hand(*dialog, "windowactivate", "--sync")
        utility.hand("key", "ctrl+l")
        utility.hand("type", path)
        # The dialog ignores the key until it has looked the path up.
        utility.until(lambda: not utility.hand(*dialog) or utility.hand("key", "Return"))
        utility.shows("Chosen", "3", "In the dialog of the portal.")
