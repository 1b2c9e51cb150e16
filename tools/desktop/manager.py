"""The windows of a display, as its window manager reports them."""
import contextlib

from Xlib import X, error
from Xlib.protocol import event


class Manager:
    def __init__(self, display):
        self._display = display
        self._root = display.screen().root
        self._unmapped = self._root.create_window(0, 0, 1, 1, 0, X.CopyFromParent)

    def is_ready(self):
        """Returns whether the window manager answers. Before its first answer, it may not notice a new window."""
        question = event.ClientMessage(window=self._unmapped, data=(32, [0] * 5),
                                       client_type=self._display.intern_atom("_NET_REQUEST_FRAME_EXTENTS"))
        self._root.send_event(question, X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        return self._property(self._unmapped, "_NET_FRAME_EXTENTS")

    def window(self, title):
        """The id of the window, without the border and title bar that the window manager adds."""
        return self._client(title).id

    def place(self, title):
        """Left, top, width and height of the window without its border."""
        window = self._client(title)
        size = window.get_geometry()
        corner = self._root.translate_coords(window, 0, 0)
        return corner.x, corner.y, size.width, size.height

    def close(self):
        with contextlib.suppress(error.ConnectionClosedError):  # the display may have ended before
            self._display.close()

    def _client(self, title):
        """The topmost window of that title."""
        for number in reversed(self._property(self._root, "_NET_CLIENT_LIST_STACKING")):
            window = self._display.create_resource_object("window", number)
            if bytes(self._property(window, "_NET_WM_NAME")).decode() == title:
                return window
        raise LookupError(f"no window titled {title!r}")

    def _property(self, window, name):
        found = window.get_full_property(self._display.intern_atom(name), X.AnyPropertyType)
        return found.value if found else ()
