"""The program in the Wayland session of another desktop, whose screen is a window of the X server. Needs root."""
import time

from .utility import Utility

GNOME = """
overview() { gdbus call --session -d org.gnome.Shell -o /org/gnome/Shell -m "org.freedesktop.DBus.Properties.$@"; }
gnome-shell --nested --wayland --wayland-display wayland-0 &
until overview Get org.gnome.Shell OverviewActive | grep -q true; do kill -0 $!; sleep 0.2; done
overview Set org.gnome.Shell OverviewActive '<false>'
exec "$@"
"""
KWIN = """
kwin_wayland --x11-display "$DISPLAY" --width 1280 --height 1024 --no-lockscreen --socket wayland-0 &
until [ -S "$XDG_RUNTIME_DIR/wayland-0" ]; do kill -0 $!; sleep 0.2; done
exec "$@"
"""
SWAY = r"""
printf '%s\n' 'xwayland disable' 'output * resolution 1280x1024' 'for_window [app_id=".*"] floating enable' \
  >"$XDG_RUNTIME_DIR/sway"
sway -c "$XDG_RUNTIME_DIR/sway" &
until [ -S "$XDG_RUNTIME_DIR/wayland-1" ]; do kill -0 $!; sleep 0.2; done
exec "$@"
"""
SHELLS = {
    "gnome": (GNOME, {"XDG_CURRENT_DESKTOP": "GNOME", "GSETTINGS_BACKEND": "keyfile",
                      "MUTTER_DEBUG_DUMMY_MODE_SPECS": "1280x1024"}),
    "kwin": (KWIN, {"XDG_CURRENT_DESKTOP": "KDE", "KDE_SESSION_VERSION": "6", "QT_QPA_PLATFORMTHEME": "kde"}),
    "sway": (SWAY, {"WAYLAND_DISPLAY": "wayland-1", "WLR_BACKENDS": "x11", "WLR_RENDERER": "pixman"})}


class NestedUtility(Utility):
    def __init__(self, shell, user, program, settings=""):
        """settings: the directory of the desktop's settings, if not the usual one."""
        super().__init__(user, program)
        script, self._desktop = SHELLS[shell]
        self._settings = settings
        self._compositor = ["sh", "-ec", script, shell]

    def fill(self, field, text):
        if not text.endswith("gz"):
            return self.set_text(field, text)
        # The whole text would start a check, and its dialog would delay the answer.
        self.set_text(field, text[:-1])
        self.act(field)
        self.until(lambda: self.state(field)["focused"])
        self.key("End", text[-1])

    def click(self, name):
        self.act(name)

    def screenshot(self, path, title=None):
        """Saves a picture of all windows."""
        time.sleep(2)  # the desktop animates windows
        super().screenshot(path)

    def _start_manager(self, undo):
        self.variables |= {
            "XDG_CONFIG_HOME": self._settings, "XDG_SESSION_TYPE": "wayland", "WAYLAND_DISPLAY": "wayland-0",
            "QT_QPA_PLATFORM": "wayland", "LIBGL_ALWAYS_SOFTWARE": "1"} | self._desktop
