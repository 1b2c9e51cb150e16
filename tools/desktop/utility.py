"""The program in its user's words."""
from .session import Session

AUTHENTICATE, MAIN = "Authenticate", "ZELTO Group Update Utility"


class Utility(Session):
    def fill(self, field, text):
        self.click(field)
        # The window manager sees a click first: keys could overtake it.
        self.until(lambda: self.state(field)["focused"])
        self.key("ctrl+a")
        self.type(text) if text else self.key("BackSpace")

    def try_pair(self, name, password):
        self.window(AUTHENTICATE)
        self.fill("Name:", name)
        self.fill("Password or Phrase:", password)
        self.click("Authenticate")

    def authenticate(self, name, password):
        self.try_pair(name, password)
        self.window(MAIN)

    def choose(self, path):
        self.click("Choose update file")
        self.window("Open")
        self.fill("File name:", path)
        self.key("Return")

    def record(self):
        return self.label_after(MAIN, "Product:"), self.label_after(MAIN, "Version:"), self.text("Description")

    def shows(self, *record):
        self.until(lambda: self.record() == record)

    def status(self):
        return self.label_after(MAIN, "Drop the downloaded")

    def can_update(self):
        return self.state("Update")["enabled"]

    def start(self):
        self.until(self.can_update)
        self.click("Update")

    def install(self, path):
        self.set_text("Patchfile:", path)
        self.start()

    def dialog(self, *buttons):
        """The texts of the dialog with just these buttons; it bears the main window's title."""
        self.until(lambda: sorted(self.buttons(MAIN)) == sorted(buttons))
        return self.texts(MAIN)

    def outcome(self):
        return self.dialog("Quit", "Install Another")

    def answer_by_keyboard(self, button, default):
        """A new dialog ignores the keyboard: first the focus has to leave its default button."""
        self.until(lambda: self.key("Tab") or not self.state(default)["focused"])
        self.until(lambda: self.state(button)["focused"] or self.key("Tab"))
        self.key("Return")

    def answer(self, button):
        self.click(button)
        self.dialog("Choose update file", "Update")
