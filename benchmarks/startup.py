"""From the start of a program to the moment at which its first window takes keys."""
import os
import subprocess
import time

from Xlib import X, display, error
from Xlib.protocol import event

from desktop.wait import until


class Stopwatch:
    """Watches a display as its window manager's helper would."""

    def __init__(self, name):
        self._display = display.Display(name)
        self._root = self._display.screen().root
        self._atom = self._display.intern_atom
        self._root.change_attributes(event_mask=X.PropertyChangeMask | X.StructureNotifyMask)
        self._display.sync()

    def time(self, command, environment, **options):
        """Seconds until the window is active and its program answers, and the peak resident memory in KiB then."""
        start = time.perf_counter()
        program = subprocess.Popen(command, env=environment, **options)
        try:
            while not (window := self._active()):
                self._display.next_event()
            self._ping(window)
            took = time.perf_counter() - start
            return took, _peak(program.pid)
        finally:
            program.kill()
            program.wait()
            until(lambda: not self._windows("_NET_CLIENT_LIST"), 10, lambda: "the window stays")

    def _active(self):
        clients = self._windows("_NET_CLIENT_LIST")
        return next((window for window in self._windows("_NET_ACTIVE_WINDOW") if window in clients), None)

    def _windows(self, name):
        found = self._root.get_full_property(self._atom(name), X.AnyPropertyType)
        return found.value if found else ()

    def _ping(self, number):
        """The answer comes from the program's event loop, behind all that came before, such as the first drawing."""
        window = self._display.create_resource_object("window", number)
        ask = event.ClientMessage(window=window, client_type=self._atom("WM_PROTOCOLS"),
                                  data=(32, [self._atom("_NET_WM_PING"), X.CurrentTime, number, 0, 0]))
        window.send_event(ask)
        self._display.flush()
        while True:
            answer = self._display.next_event()
            if answer.type == X.ClientMessage and answer.client_type == self._atom("WM_PROTOCOLS"):
                return


def _peak(pid):
    with open(f"/proc/{pid}/status") as status:
        return next(int(line.split()[1]) for line in status if line.startswith("VmHWM:"))
