"""A window of another program with a file to drag: drag_source.py FILE X Y.
Prints the events of the drag to stdout."""
import sys
from pathlib import Path

import gi
gi.require_version("Gdk", "3.0")
gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, Gtk

path, x, y = sys.argv[1:]


def say(word):
    print(word, flush=True)


def follow(_, context):
    context.connect("action-changed", lambda _, action: say("accept" if action else "refuse"))


source = Gtk.Window(type=Gtk.WindowType.POPUP)
source.set_default_size(64, 64)
source.move(int(x), int(y))
source.drag_source_set(Gdk.ModifierType.BUTTON1_MASK, [], Gdk.DragAction.COPY)
source.drag_source_add_uri_targets()
source.connect("map-event", lambda *_: say("ready"))
source.connect("drag-begin", follow)
source.connect("drag-data-get", lambda _, __, data, *___: data.set_uris([Path(path).as_uri()]))
source.connect("drag-failed", lambda *_: say("failed"))
source.connect("drag-end", lambda *_: say("ended"))
source.show_all()
Gtk.main()
