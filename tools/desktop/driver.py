"""Runs inside the virtual desktop as its user. driver.py DESCRIPTOR SCALE COMMAND... starts the program and answers
requests, each one line of JSON."""
import contextlib
import ctypes
import json
import os
import signal
import socket
import subprocess
import sys

import gi
gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib

from wait import until

LIMIT = 15
PLAIN_FIELDS = Atspi.Role.TEXT, Atspi.Role.ENTRY
FIELDS = *PLAIN_FIELDS, Atspi.Role.PASSWORD_TEXT
PR_SET_CHILD_SUBREAPER = 36


class Driver:
    """The public methods are the requests. Of several windows with the same title, the active one is used. A balloon
    does not count as a window."""

    def __init__(self, scale, command):
        # Orphans of the program become children of this process, so that the session finds them.
        ctypes.CDLL(None).prctl(PR_SET_CHILD_SUBREAPER, 1)
        # A shell starts background processes with SIGINT ignored, and children inherit that.
        signal.signal(signal.SIGINT, signal.SIG_DFL)
        # The program answers only after its handler has returned, for a check later than the default of 800 ms.
        Atspi.set_timeout(LIMIT * 1000, LIMIT * 1000)
        self._scale, self._heard = scale, []
        self._program = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)

    def window(self, title, limit=LIMIT):
        """Waits until the window is active. Before that, it may not have been painted."""
        self._wait(lambda: _has(self._window(title), Atspi.StateType.ACTIVE) or None,
                   f"no active window {title!r}", limit)

    def windows(self):
        """Titles of the visible windows, the active window first."""
        if self._program.poll() is not None:
            return []
        return self._wait(lambda: [window.get_name() for window in self._windows()], "no answer")

    def screen(self):
        """The titles of the windows and their texts, for messages."""
        if self._program.poll() is not None:
            return f"the program ended with {self._program.returncode}"
        try:
            return f"on the screen: { {w.get_name(): _texts(w) for w in self._windows()} }"
        except (GLib.Error, AttributeError) as error:
            return f"the program does not answer: {error}"

    def act(self, name):
        """Presses a button or focuses a field, where the place of a window on the screen is not known."""
        self._control(name).get_action_iface().do_action(0)

    def centre(self, name):
        """The centre of the control in pixels of the screen."""
        box = self._control(name).get_component_iface().get_extents(Atspi.CoordType.SCREEN)
        return [round((start + size / 2) * self._scale) for start, size in ((box.x, box.width), (box.y, box.height))]

    def place(self, title):
        """Left, top and width of the window without its frame, in pixels of the screen at scale 1."""
        box = self._wait(lambda: self._window(title).get_component_iface().get_extents(Atspi.CoordType.SCREEN),
                         f"no window {title!r}")
        return box.x, box.y, box.width

    def await_keyboard(self):
        self._wait(lambda: any(_has(window, Atspi.StateType.ACTIVE) for window in self._windows()) or None,
                   "no window has the keyboard")

    def set_text(self, field, text):
        self._control(field, FIELDS).get_editable_text_iface().set_text_contents(text)

    def text(self, field):
        return _text_of(self._control(field, FIELDS))

    def texts(self, title):
        return self._wait(lambda: _texts(self._window(title)), f"no window {title!r}")

    def buttons(self, title):
        return self._wait(lambda: _texts(self._window(title), (Atspi.Role.PUSH_BUTTON,)), f"no window {title!r}")

    def roles(self, title):
        """Role of the window, then the roles of all that it shows."""
        return self._wait(lambda: [node.get_role_name() for node in _showing(self._window(title))],
                          f"no window {title!r}")

    def label_after(self, title, text):
        """Finds the label whose text starts with the given text. Returns the text of the next label."""
        labels = self._wait(lambda: _texts(self._window(title), (Atspi.Role.LABEL,)), f"no window {title!r}")
        at, = (number for number, label in enumerate(labels) if label.startswith(text))
        return labels[at + 1]

    def state(self, name):
        node = self._control(name)
        return {"enabled": _has(node, Atspi.StateType.ENABLED), "focused": _has(node, Atspi.StateType.FOCUSED),
                "default": _has(node, Atspi.StateType.IS_DEFAULT)}

    def description(self, name):
        return self._control(name).get_description()

    def listen(self, event):
        self._listener = Atspi.EventListener.new(self._hear)
        self._listener.register(event)

    def heard(self):
        """Sender and text of every event so far. The sender is None if it no longer exists."""
        while GLib.MainContext.default().iteration(False):
            pass
        return self._heard

    def pid(self):
        return self._program.pid

    def poll(self):
        """The exit status of the program, or None while it runs."""
        return self._program.poll()

    def exit_status(self, limit=LIMIT):
        until(lambda: self._program.poll() is not None, limit, lambda: f"still running; {self.screen()}")
        return self._program.returncode

    def await_all_processes(self, limit=60):
        """Waits until the program and all processes that it has started have ended."""
        self.exit_status(limit)
        with contextlib.suppress(ChildProcessError):
            until(lambda: os.waitpid(-1, os.WNOHANG) and False, limit, lambda: "a process of the program still runs")

    def kill(self, number):
        self._program.send_signal(number)

    def _hear(self, event):
        sender = None
        with contextlib.suppress(GLib.Error):
            sender = event.source.get_name()
        self._heard.append([sender, str(event.any_data)])

    def _wait(self, reading, complaint, limit=LIMIT):
        """Returns the first result of reading() other than None. Ignores errors of windows that just closed."""
        def tried():
            if self._program.poll() is not None:
                raise RuntimeError(f"{complaint}; {self.screen()}")
            with contextlib.suppress(GLib.Error, AttributeError):
                value = reading()
                return value is not None and [value]
        return until(tried, limit, lambda: f"{complaint}; {self.screen()}")[0]

    def _windows(self):
        desktop = Atspi.get_desktop(0)
        desktop.set_cache_mask(Atspi.Cache.NONE)
        windows = []
        for application in _children(desktop):
            if application.get_process_id() == self._program.pid:
                application.set_cache_mask(Atspi.Cache.NONE)
                windows += [w for w in _children(application)
                            if _has(w, Atspi.StateType.SHOWING) and w.get_role() != Atspi.Role.LABEL]
        return sorted(windows, key=lambda window: not _has(window, Atspi.StateType.ACTIVE))

    def _window(self, title):
        return next((w for w in self._windows() if w.get_name() == title), None)

    def _control(self, name, roles=None):
        """Finds a control by name. Prefers a field to a label with the same name."""
        def found():
            nodes = [node for window in self._windows() for node in _walk(window)
                     if node.get_name() == name and node.get_parent().get_role() != Atspi.Role.APPLICATION
                     and (roles is None or node.get_role() in roles)
                     and _has(node, Atspi.StateType.SHOWING)]
            return min(nodes, key=lambda node: not _has(node, Atspi.StateType.FOCUSABLE), default=None)
        return self._wait(found, f"nothing named {name!r}")


def _children(node):
    return filter(None, map(node.get_child_at_index, range(node.get_child_count())))


def _walk(node):
    yield node
    for child in _children(node):
        yield from _walk(child)


def _has(node, state):
    return node.get_state_set().contains(state)


def _text_of(node):
    return Atspi.Text.get_text(node, 0, Atspi.Text.get_character_count(node))


def _showing(window):
    return [node for node in _walk(window) if _has(node, Atspi.StateType.SHOWING)]


def _texts(window, roles=(Atspi.Role.LABEL, *PLAIN_FIELDS)):
    """Texts of what the window shows in these roles."""
    return [_text_of(node) if node.get_role() in FIELDS else node.get_name()
            for node in _showing(window) if node.get_role() in roles]


def main():
    descriptor, scale, *command = sys.argv[1:]
    with socket.socket(fileno=int(descriptor)) as link:
        driver = Driver(float(scale), command)
        requests = link.makefile("rw")
        for line in requests:
            verb, arguments = json.loads(line)
            try:
                answer = {"value": getattr(driver, verb)(*arguments)}
            except Exception as error:
                answer = {"error": f"{type(error).__name__}: {error}"}
            print(json.dumps(answer), file=requests, flush=True)


main()
