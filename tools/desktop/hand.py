"""Mouse and keyboard of the display."""
import os
import subprocess
import sys
from pathlib import Path

from Xlib import display

from wait import until

ON_WAYLAND = "WAYLAND_DISPLAY" in os.environ


def xdotool(*arguments, text=None):
    subprocess.run(["xdotool", *map(str, arguments)], input=text, text=True, check=True, timeout=120)


def wtype(*arguments, text=None):
    """Runs wtype. Waits first, because the compositor drops keys until it knows the new keyboard."""
    subprocess.run(["wtype", "-s", "500", *map(str, arguments)], input=text, text=True, check=True, timeout=120)


def click(x, y):
    xdotool("mousemove", x, y, "click", 1)


def key(*keys):
    if ON_WAYLAND:
        for each in keys:
            *modifiers, last = each.split("+")
            wtype(*(word for name in modifiers for word in ("-M", name)), "-k", last)
        return
    xdotool("key", "--clearmodifiers", *keys)


def type_text(text):
    if ON_WAYLAND:
        return wtype("-d", 30, "-", text=text)
    _bind_missing(text)
    xdotool("type", "--clearmodifiers", "--delay", 10, "--file", "-", text=text)


def drag_file(path, x, y):
    """Drags the file from another program's window to the point. Returns whether it was accepted."""
    start = _far_corner(x, y)
    source = subprocess.Popen([sys.executable, Path(__file__).with_name("drag_source.py"), path,
                               *map(str, start)], stdout=subprocess.PIPE, bufsize=0)
    os.set_blocking(source.stdout.fileno(), False)
    heard = bytearray()

    def said(word):
        heard.extend(source.stdout.read() or b"")
        return word in heard

    def welcome():
        xdotool("mousemove_relative", "--", *((1, 0) if len(nudges) % 2 else (-1, 0)))
        nudges.append(None)
        return said(b"accept") and heard.rfind(b"accept") > heard.rfind(b"refuse")

    nudges = []
    try:
        until(lambda: said(b"ready"), 10, lambda: "the window to drag from does not show")
        from_x, from_y = start[0] + 32, start[1] + 32
        xdotool("mousemove", from_x, from_y, "mousedown", 1)
        for step in range(1, 31):
            xdotool("mousemove", from_x + (x - from_x) * step // 30, from_y + (y - from_y) * step // 30)
        try:
            until(welcome, 3, lambda: "not welcome")
        except TimeoutError:
            pass  # the target refuses the file
        xdotool("mousemove", x, y, "mouseup", 1)
        until(lambda: said(b"ended"), 10, lambda: "the drag does not end")
        return not said(b"failed")
    finally:
        source.kill()
        source.wait()


def _far_corner(x, y):
    screen = display.Display().screen()
    return (0 if x > screen.width_in_pixels / 2 else screen.width_in_pixels - 64,
            0 if y > screen.height_in_pixels / 2 else screen.height_in_pixels - 64)


def _bind_missing(text):
    """Binds every character without a key to a spare key. Otherwise xdotool would rebind keys between
    two strokes, and a program that reads the key map late would get a wrong character."""
    server = display.Display()
    first = server.display.info.min_keycode
    rows = server.get_keyboard_mapping(first, server.display.info.max_keycode - first + 1)
    known = {symbol for row in rows for symbol in row}
    wanted = {ord(c) if ord(c) < 0x100 else 0x1000000 | ord(c) for c in text if c.isprintable()}
    spare = [first + i for i, row in enumerate(rows) if not any(row)]
    missing = sorted(wanted - known)
    if len(missing) > len(spare):
        raise ValueError(f"{len(missing)} characters without a key, room for {len(spare)}")
    for code, symbol in zip(spare, missing):
        server.change_keyboard_mapping(code, [(symbol, symbol)])
    server.sync()
    server.close()
