"""The program on a headless Wayland desktop, driven by keyboard. Needs root."""
import shutil

from .display import PATH, end
from .utility import Utility
from .wait import until

CONFIG = """xwayland disable
output HEADLESS-1 resolution {width}x{height} scale {scale} background #c0c0c0 solid_color
for_window [app_id=".*"] floating enable
"""


def missing():
    """The required programs that are not installed."""
    return [name for name in ("sway", "wtype") if not shutil.which(name, path=PATH)]


class WaylandUtility(Utility):
    def __init__(self, user, program, scale=1, **session):
        # The compositor scales, not Qt.
        super().__init__(user, program, **session)
        self._compositor_scale = scale

    def _start_display(self, undo):
        width, height, _ = self._size.split("x")
        config = self._folder / "sway.conf"
        config.write_text(CONFIG.format(width=width, height=height, scale=self._compositor_scale))
        self.variables = {"XDG_RUNTIME_DIR": str(self._runtime), "XDG_SESSION_TYPE": "wayland", "WLR_BACKENDS": "headless",
                          "WLR_LIBINPUT_NO_DEVICES": "1", "WLR_RENDERER": "pixman"}
        undo.callback(end, self.launch(["sway", "-c", config]))
        socket = until(lambda: next(self._runtime.glob("wayland-?"), None), 10,
                       lambda: "the compositor does not start: " + (self._folder / "desktop.log").read_text())
        self.variables["WAYLAND_DISPLAY"] = socket.name
        # A permanent keyboard: without one, no window has the focus.
        undo.callback(end, self.launch(["wtype", "-s", "86400000"]))

    def screenshot(self, path, title=None):
        """Saves a picture of the whole screen."""
        self._run(["grim", path]).check_returncode()
