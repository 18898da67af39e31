#!/usr/bin/python3
"""A window with one text entry. Prints null when it gets the focus, and the entry's text as JSON at each change."""
import json

import gi

gi.require_version("Gtk", "3.0")
from gi.repository import GLib, Gtk  # noqa: E402


def tell(value):
    print(json.dumps(value), flush=True)


window = Gtk.Window(title="entry")
entry = Gtk.Entry()
window.add(entry)
window.set_default_size(500, 60)
window.connect("destroy", Gtk.main_quit)
entry.connect("changed", lambda changed: tell(changed.get_text()))
entry.connect("focus-in-event", lambda *_: GLib.idle_add(tell, None) and False)
window.show_all()
entry.grab_focus()
Gtk.main()
