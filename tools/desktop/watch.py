"""Records the events of a display in the X server, which avoids races."""
import contextlib
import struct
import threading

from Xlib import X, Xatom, display, error
from Xlib.ext import record
from Xlib.protocol import event

from .wait import until

MAP, UNMAP, CHANGE_PROPERTY, SEND_EVENT, BELL = 8, 10, 18, 25, 104
CLIENT_MESSAGE = 33
XKB_BELL = 3
NOTHING = {"core_requests": (0, 0), "core_replies": (0, 0), "ext_requests": (0, 0, 0, 0),
           "ext_replies": (0, 0, 0, 0), "delivered_events": (0, 0), "device_events": (0, 0),
           "errors": (0, 0), "client_started": False, "client_died": False}


class Watcher:
    """Records the titles of all windows that were shown, however briefly, and of those that demanded
    attention, and counts the bells."""

    def __init__(self, name):
        self._control = display.Display(name)
        self._data = display.Display(name)
        self._root = self._control.screen().root
        self._marker = self._root.create_window(0, 0, 1, 1, 0, X.CopyFromParent)
        self._title_atoms = (Xatom.WM_NAME, self._control.intern_atom("_NET_WM_NAME"))
        self._attention_atom = self._control.intern_atom("_NET_WM_STATE_DEMANDS_ATTENTION")
        self._titles, self._mapped, self._shown, self._bells, self._marks = {}, set(), {}, 0, 0
        self._calls = []
        self._xkb = self._control.query_extension("XKEYBOARD").major_opcode
        ranges = [NOTHING | {"core_requests": (code, code)} for code in (MAP, UNMAP, CHANGE_PROPERTY, SEND_EVENT, BELL)]
        ranges.append(NOTHING | {"ext_requests": (self._xkb, self._xkb, XKB_BELL, XKB_BELL)})
        self._context = self._data.record_create_context(0, [record.AllClients], ranges)
        started = threading.Event()
        self._thread = threading.Thread(target=self._listen, args=(started,), daemon=True)
        self._thread.start()
        if not started.wait(10):
            raise TimeoutError("the display does not let itself be watched")

    def shown(self):
        """Titles of all windows shown so far, in order."""
        self._catch_up()
        return list(self._shown)

    def bells(self):
        self._catch_up()
        return self._bells

    def asked_for_attention(self):
        self._catch_up()
        return list(self._calls)

    def managed(self):
        """True if the window manager answers. One that is still starting can miss a new window."""
        question = event.ClientMessage(window=self._marker, data=(32, [0] * 5),
                                       client_type=self._control.intern_atom("_NET_REQUEST_FRAME_EXTENTS"))
        self._root.send_event(question, X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        return self._property(self._marker, "_NET_FRAME_EXTENTS")

    def frame(self, title):
        """The id of the frame window around the window with the title."""
        window = self._client(title)
        while (parent := window.query_tree().parent) != self._root:
            window = parent
        return window.id

    def place(self, title):
        """Left, top, width and height of the window with the title, without its border."""
        window = self._client(title)
        size = window.get_geometry()
        corner = self._root.translate_coords(window, 0, 0)
        return corner.x, corner.y, size.width, size.height

    def steal_focus(self):
        """Shows a window of another program that takes the focus."""
        window = self._root.create_window(0, 0, 64, 64, 0, X.CopyFromParent)
        window.map()
        until(lambda: window.get_attributes().map_state == X.IsViewable, 10, lambda: "the window does not show")
        window.set_input_focus(X.RevertToParent, X.CurrentTime)
        self._control.sync()

    def close(self):
        with contextlib.suppress(error.ConnectionClosedError):  # the display can have ended before
            self._control.record_disable_context(self._context)
            self._control.flush()
        self._thread.join(10)
        for connection in self._control, self._data:
            with contextlib.suppress(error.ConnectionClosedError):
                connection.close()

    def _catch_up(self):
        """Waits until the record, which arrives late, contains a change made now."""
        self._marks += 1
        mark = f"mark {self._marks}"
        self._marker.set_wm_name(mark)
        self._control.sync()
        until(lambda: mark in self._titles.get(self._marker.id, {}).values(), 10,
              lambda: "the display's record has stopped")

    def _client(self, title):
        """The topmost window with the title."""
        for number in reversed(self._property(self._root, "_NET_CLIENT_LIST_STACKING")):
            window = self._control.create_resource_object("window", number)
            if bytes(self._property(window, "_NET_WM_NAME")).decode() == title:
                return window
        raise LookupError(f"no window titled {title!r}")

    def _property(self, window, name):
        found = window.get_full_property(self._control.intern_atom(name), X.AnyPropertyType)
        return found.value if found else ()

    def _listen(self, started):
        def note(reply):
            if reply.category == record.StartOfData:
                started.set()
            elif reply.category == record.FromClient:
                self._requests(reply.data)
        with contextlib.suppress(error.ConnectionClosedError):
            self._data.record_enable_context(self._context, note)

    def _requests(self, data):
        while data:
            opcode, _, words = struct.unpack_from("=BBH", data)
            if opcode in (BELL, self._xkb):
                self._bells += 1
            else:
                self._window_request(opcode, data)
            if not words:  # an oversized request, such as a large icon, arrives alone
                return
            data = data[4 * words:]

    def _window_request(self, opcode, data):
        window, = struct.unpack_from("=I", data, 4)
        if opcode == MAP:
            self._mapped.add(window)
        elif opcode == UNMAP:
            self._mapped.discard(window)
        elif opcode == CHANGE_PROPERTY:
            atom, _, _, length = struct.unpack_from("=IIB3xI", data, 8)
            if atom in self._title_atoms:
                self._titles.setdefault(window, {})[atom] = data[24:24 + length].decode(errors="replace")
        elif opcode == SEND_EVENT:
            kind, window, action, *properties = struct.unpack_from("=12xB3xI4xIII", data)
            if kind == CLIENT_MESSAGE and action == 1 and self._attention_atom in properties:
                self._calls += [next(iter(self._titles.get(window, {}).values()), "")]
        if window in self._mapped:
            for title in self._titles.get(window, {}).values():
                self._shown.setdefault(title)
