#!/usr/bin/env python3
"""A GTK 4 program with a text view that has the focus, and which tells what arrived in it. Speaks as gtk_target.py does."""
import json
import os
import sys

import gi

gi.require_version("Gtk", "4.0")
from gi.repository import GLib, Gtk  # noqa: E402


def say(message):
    sys.stdout.write(json.dumps(message) + "\n")
    sys.stdout.flush()


class Program:
    def __init__(self, application):
        self.rest, self.view = b"", Gtk.TextView()
        self.buffer = self.view.get_buffer()
        self.buffer.connect("changed", lambda _: say({"event": "changed", "characters": len(self.text())}))
        self.window = Gtk.ApplicationWindow(application=application, title="target", default_width=500,
                                            default_height=300, child=self.view)
        self.window.connect("notify::is-active", lambda *_: self.window.is_active() and say({"event": "ready"}))
        self.view.grab_focus()
        self.window.present()
        GLib.unix_fd_add_full(GLib.PRIORITY_DEFAULT, 0, GLib.IOCondition.IN | GLib.IOCondition.HUP, self.readable)

    def text(self):
        return self.buffer.get_text(*self.buffer.get_bounds(), True)

    def readable(self, fd, _):
        data = os.read(fd, 65536)
        if not data:
            sys.exit(0)
        *lines, self.rest = (self.rest + data).split(b"\n")
        for line in lines:
            request = json.loads(line)
            if request["do"] == "clear":
                self.buffer.set_text("")
            say({"id": request["id"], "text": self.text(), "focus": "field" if self.window.is_active() else ""})
        return True


def main():
    application = Gtk.Application(application_id="org.example.Target")
    application.connect("activate", Program)
    application.run([])


main()
