"""A window of another program in the top left corner, with a file to drag: drag_source.py FILE.
Prints "shown", and "accepted" when a target accepts the file."""
import sys
from pathlib import Path

import gi
gi.require_version("Gdk", "3.0")
gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, Gtk


def follow(_, context):
    context.connect("action-changed", lambda _, action: action and print("accepted", flush=True))


source = Gtk.Window(type=Gtk.WindowType.POPUP)
source.set_default_size(64, 64)
source.drag_source_set(Gdk.ModifierType.BUTTON1_MASK, [], Gdk.DragAction.COPY)
source.drag_source_add_uri_targets()
source.connect("map-event", lambda *_: print("shown", flush=True))
source.connect("drag-begin", follow)
source.connect("drag-data-get", lambda _, __, data, *___: data.set_uris([Path(sys.argv[1]).as_uri()]))
source.connect("drag-end", Gtk.main_quit)
source.show_all()
Gtk.main()
