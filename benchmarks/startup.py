"""Measures the start of a program until its first window accepts keys."""
import time

from Xlib import X
from Xlib.protocol import event

from desktop.wait import until


class Stopwatch:
    def __init__(self, desktop):
        self._desktop = desktop
        self._display = desktop.connect()
        self._root = self._display.screen().root
        # Requests the events of the root window: changes of its properties, and the replies to pings, which clients
        # send to it.
        self._root.change_attributes(event_mask=X.PropertyChangeMask | X.StructureNotifyMask)
        self._display.sync()

    def time(self, name):
        """Returns the milliseconds until the active window answers a ping, and the peak memory in KiB."""
        start = time.perf_counter()
        program = self._desktop.launch([self._desktop.copy_of(name)])
        try:
            while not (window := self._active()):
                self._display.next_event()
            self._ping(window)
            return 1000 * (time.perf_counter() - start), peak(program.pid)
        finally:
            program.kill()
            program.wait()
            until(lambda: not self._windows("_NET_CLIENT_LIST"), 10, lambda: "the window stays")

    def _active(self):
        clients = self._windows("_NET_CLIENT_LIST")
        return next((window for window in self._windows("_NET_ACTIVE_WINDOW") if window in clients), None)

    def _windows(self, name):
        found = self._root.get_full_property(self._display.intern_atom(name), X.AnyPropertyType)
        return found.value if found else ()

    def _ping(self, number):
        """The event loop answers a ping after all earlier events, including the first paint."""
        protocols, ping = map(self._display.intern_atom, ("WM_PROTOCOLS", "_NET_WM_PING"))
        window = self._display.create_resource_object("window", number)
        window.send_event(event.ClientMessage(window=window, client_type=protocols,
                                              data=(32, [ping, X.CurrentTime, number, 0, 0])))
        self._display.flush()
        while True:
            answer = self._display.next_event()
            if answer.type == X.ClientMessage and answer.client_type == protocols:
                return


def peak(pid):
    with open(f"/proc/{pid}/status") as status:
        return next(int(line.split()[1]) for line in status if line.startswith("VmHWM:"))
