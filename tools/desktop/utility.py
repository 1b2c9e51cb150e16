"""Actions of a user of the program."""
import contextlib

from .session import Session

AUTHENTICATE, MAIN = "Authenticate", "ZELTO Group Update Utility"
PASSWORD_FIELD = "Password or Phrase:"


class Utility(Session):
    def fill(self, field, text):
        if not text.isascii():  # xdotool would rebind keys between two strokes
            return self.set_text(field, text)
        self.click(field)
        # A click passes through the window manager, so a later key could arrive before the click.
        self.until(lambda: self.state(field)["focused"])
        self.key("ctrl+a")
        self.type(text) if text else self.key("BackSpace")

    def try_pair(self, name, password):
        self.window(AUTHENTICATE)
        self.fill("Name:", name)
        self.fill(PASSWORD_FIELD, password)
        self.click("Authenticate")

    def authenticate(self, name, password):
        self.try_pair(name, password)
        self.window(MAIN)

    def refusal(self, stays=False):
        """Returns the reason in the balloon. A key removes the balloon, except that of the last attempt."""
        reason = self.until(lambda: self.description(PASSWORD_FIELD))
        self.key("End")
        self.until(lambda: bool(self.description(PASSWORD_FIELD)) == stays)
        return reason

    def check(self, path):
        """Types the path of a file, which its check must accept."""
        self.fill("Patchfile:", path)
        self.until(self.can_update)

    def choose(self, path):
        self.click("Choose update file")
        self.window("Open")
        self.fill("File name:", path)
        self.key("Return")

    @contextlib.contextmanager
    def about(self):
        """Shows the About window in the `with` block."""
        self.key("alt+f", "Down", "Return")
        self.window("About")
        yield
        self.key("Escape")
        self.window(MAIN)

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

    def dialog(self, *buttons, limit=15):
        """Waits for a window with the title of the main window and exactly these buttons. Returns its texts."""
        self.until(lambda: sorted(self.buttons(MAIN)) == sorted(buttons), limit)
        return self.texts(MAIN)

    def outcome(self):
        return self.dialog("Quit", "Install Another", limit=60)

    def answer_by_keyboard(self, button, default):
        """Presses the button with keys. Waits first, because a new dialog ignores keys for a moment."""
        self.until(lambda: self.key("Tab") or not self.state(default)["focused"])
        self.until(lambda: self.state(button)["focused"] or self.key("Tab"))
        self.key("Return")

    def answer(self, button):
        self.click(button)
        self.dialog("Choose update file", "Update")

    def quit(self):
        self.click("Quit")
        status = self.exit_status()
        assert status == 0, f"exit status {status}"
