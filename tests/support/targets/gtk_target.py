#!/usr/bin/env python3
"""A GTK program with one field that has the focus, and which tells what arrived in it.

    gtk_target.py entry|view
    gtk_target.py terminal COMMAND...      the field is a terminal in which the command runs

Requests come as lines of JSON on standard input, each with an id that its answer repeats:
    {"do": "report"}                     what the field holds, and the widget that has the focus
    {"do": "clear"}
    {"do": "readLate", "after": ms}      from now on the clipboard is read so long after the paste key; -1: never
Events come unasked: "ready" once the window has the focus, "pasteAsked", and "changed" with the field's length.
"""
import json
import os
import sys
import time

import gi

gi.require_version("Gdk", "3.0")
gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, GLib, Gtk  # noqa: E402


def say(message):
    sys.stdout.write(json.dumps(message) + "\n")
    sys.stdout.flush()


class TextField:
    """An entry or a text view, which GTK gives the same signals."""

    def __init__(self, kind):
        self.widget = Gtk.Entry() if kind == "entry" else Gtk.TextView()
        self.holder = self.widget if kind == "entry" else self.widget.get_buffer()
        self.after = 0
        self.holder.connect("changed", lambda _: say({"event": "changed", "characters": len(self.text())}))
        self.pasting = self.widget.connect("paste-clipboard", self.asked)

    def text(self):
        if isinstance(self.widget, Gtk.Entry):
            return self.widget.get_text()
        return self.holder.get_text(*self.holder.get_bounds(), True)

    def clear(self):
        self.holder.set_text("")

    def asked(self, widget):
        # The server's clock is the system's monotonic one, so that what has passed since the key was pressed counts.
        passed = (int(time.monotonic() * 1000) - Gtk.get_current_event_time()) & 0xFFFFFFFF
        say({"event": "pasteAsked"})
        if self.after == 0:
            return
        widget.stop_emission_by_name("paste-clipboard")
        if self.after > 0:
            GLib.timeout_add(max(0, self.after - passed), self.paste)

    def paste(self):
        with self.widget.handler_block(self.pasting):
            self.widget.emit("paste-clipboard")
        return False


class Terminal:
    def __init__(self, command):
        gi.require_version("Vte", "2.91")
        from gi.repository import Vte

        self.widget = Vte.Terminal()
        self.widget.spawn_async(Vte.PtyFlags.DEFAULT, None, command, None, GLib.SpawnFlags.DEFAULT, None, None, -1,
                                None, None)

    def text(self):
        return ""  # the command has it

    def clear(self):
        pass

    def keys(self):
        """The paste keys of a terminal program; the widget itself has none of its own for the clipboard."""
        group = Gtk.AccelGroup()
        group.connect(Gdk.KEY_v, Gdk.ModifierType.CONTROL_MASK | Gdk.ModifierType.SHIFT_MASK, 0,
                      lambda *_: self.widget.paste_clipboard() or True)
        return group


class Program:
    def __init__(self, field):
        self.field = field
        self.rest = b""
        self.window = Gtk.Window(title="target")
        box = Gtk.Box(orientation=Gtk.Orientation.VERTICAL)
        scrolled = Gtk.ScrolledWindow(vexpand=True)
        if isinstance(field.widget, Gtk.Scrollable):
            scrolled.add(field.widget)
        else:
            box.add(field.widget)
        field.widget.set_name("field")
        # Somewhere else for a stray key to go.
        other = Gtk.Button(label="_Other", use_underline=True)
        box.add(scrolled)
        box.add(other)
        self.window.add(box)
        self.window.set_default_size(500, 300)
        self.window.connect("destroy", Gtk.main_quit)
        if isinstance(field, Terminal):
            self.window.add_accel_group(field.keys())
        self.window.connect("notify::is-active", self.activated)
        field.widget.grab_focus()
        self.window.show_all()
        GLib.unix_fd_add_full(GLib.PRIORITY_DEFAULT, 0, GLib.IOCondition.IN | GLib.IOCondition.HUP, self.readable)

    def activated(self, window, _):
        if window.is_active():
            say({"event": "ready"})

    def readable(self, fd, _):
        data = os.read(fd, 65536)
        if not data:
            Gtk.main_quit()
            return False
        *lines, self.rest = (self.rest + data).split(b"\n")
        for line in lines:
            self.answer(json.loads(line))
        return True

    def answer(self, request):
        answer = {"id": request["id"]}
        if request["do"] == "report":
            focus = self.window.get_focus() if self.window.is_active() else None
            answer |= {"text": self.field.text(), "focus": focus.get_name() if focus else ""}
        elif request["do"] == "clear":
            self.field.clear()
        elif request["do"] == "readLate":
            self.field.after = request["after"]
        say(answer)


def main():
    kind = sys.argv[1]
    # The class of the window: programs with a terminal in them are known by theirs.
    GLib.set_prgname("vte-terminal" if kind == "terminal" else "gtk-target")
    program = Program(Terminal(sys.argv[2:]) if kind == "terminal" else TextField(kind))
    Gtk.main()
    del program


main()
