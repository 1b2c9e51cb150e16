"""Mouse and keyboard of the display."""
import subprocess
import sys
import tempfile
from pathlib import Path

from wait import until


def xdotool(*arguments, text=None):
    subprocess.run(["xdotool", *map(str, arguments)], input=text, text=True, check=True, timeout=120)


def click(x, y):
    xdotool("mousemove", x, y, "click", 1)


def key(*keys):
    xdotool("key", "--clearmodifiers", *keys)


def type_text(text):
    xdotool("type", "--clearmodifiers", "--delay", 10, "--file", "-", text=text)


def drag_file(path, x, y):
    """Drags the file from another program's window to the point and drops it once it is accepted."""
    with tempfile.NamedTemporaryFile() as answers, subprocess.Popen(
            [sys.executable, Path(__file__).with_name("drag_source.py"), path], stdout=answers) as source:
        def has_printed(word):
            return word in Path(answers.name).read_text()

        try:
            until(lambda: has_printed("shown"), 10, lambda: "the window to drag from does not show")
            xdotool("mousemove", 32, 32, "mousedown", 1)
            for step in range(1, 31):
                xdotool("mousemove", 32 + (x - 32) * step // 30, 32 + (y - 32) * step // 30)
            # A source reports no move until the target has answered the previous report.
            until(lambda: xdotool("mousemove", x + 1, y, "mousemove", x, y) or has_printed("accepted"), 10,
                  lambda: "the file is not accepted")
            xdotool("mouseup", 1)
            source.wait(10)
        finally:
            source.kill()
