#!/usr/bin/env python3
"""A GTK 3 program with one window, in which the test has a field of its choice shown.

Each line of the standard input is a command in JSON, each line of the standard output the answer:
    {"show": "line", "text": "abc", "start": 1, "end": 2}   a new field with the focus, and this part selected
    {"read": true}                                         {"text": "abc", "start": 1, "end": 2, "caret": 2}
    {"front": true}                                        answered when the window is the active one
Offsets are code points.
"""
import json
import sys
import threading

import gi

gi.require_version("Gtk", "3.0")
from gi.repository import GLib, Gtk  # noqa: E402

LONGEST = 12


class Line:
    """A line of text: ordinary, for a password, that cannot be edited, or that accepts everything and keeps nothing."""

    def __init__(self, kind, text):
        self.widget = Gtk.Entry(text=text, visibility=kind != "password", editable=kind != "readOnly")
        if kind == "password":
            self.widget.set_input_purpose(Gtk.InputPurpose.PASSWORD)
        if kind == "ignoring":
            self.widget.connect("insert-text", lambda entry, *_: entry.stop_emission_by_name("insert-text"))
            self.widget.connect("delete-text", lambda entry, *_: entry.stop_emission_by_name("delete-text"))
        if kind == "short":
            self.widget.set_max_length(LONGEST)

    def select(self, start, end):
        self.widget.select_region(start, end)

    def state(self):
        bounds = self.widget.get_selection_bounds()
        caret = self.widget.get_position()
        start, end = bounds if bounds else (caret, caret)
        return {"text": self.widget.get_text(), "start": start, "end": end, "caret": caret}


class Area:
    """Several lines of text."""

    def __init__(self, text):
        self.widget = Gtk.TextView()
        self.buffer = self.widget.get_buffer()
        self.buffer.set_text(text)

    def select(self, start, end):
        self.buffer.select_range(self.buffer.get_iter_at_offset(end), self.buffer.get_iter_at_offset(start))

    def state(self):
        caret = self.buffer.get_iter_at_mark(self.buffer.get_insert()).get_offset()
        bounds = self.buffer.get_selection_bounds()
        start, end = (bound.get_offset() for bound in bounds) if bounds else (caret, caret)
        whole = self.buffer.get_text(self.buffer.get_start_iter(), self.buffer.get_end_iter(), True)
        return {"text": whole, "start": start, "end": end, "caret": caret}


class Program:
    def __init__(self):
        self.window = Gtk.Window(title="fields")
        self.window.set_default_size(400, 200)
        self.field = None
        self.box = Gtk.Box(orientation=Gtk.Orientation.VERTICAL)
        self.box.add(Gtk.Label(label="a label"))
        self.box.add(Gtk.Entry(text="another field"))
        self.window.add(self.box)
        self.window.connect("notify::is-active", lambda *_: self.answer_when_active())
        self.waiting = False
        self.window.show_all()

    def answer(self, state=None):
        print(json.dumps(state or {}), flush=True)

    def answer_when_active(self):
        focused = self.field is None or self.field.widget.has_focus()
        if self.waiting and self.window.is_active() and focused:
            self.waiting = False
            self.answer()

    def obey(self, line):
        command = json.loads(line)
        if "show" in command:
            self.show(command)
        elif "front" in command:
            self.window.present()
            self.wait_until_active()
        else:
            self.answer(self.field.state())

    def show(self, command):
        if self.field:
            self.box.remove(self.field.widget)
        kind, text = command["show"], command["text"]
        self.field = Area(text) if kind == "area" else Line(kind, text)
        self.field.widget.connect("notify::has-focus", lambda *_: self.answer_when_active())
        self.box.add(self.field.widget)
        self.window.show_all()
        self.field.widget.grab_focus()
        self.field.select(command["start"], command["end"])
        self.wait_until_active()

    def wait_until_active(self):
        self.waiting = True
        self.answer_when_active()


def main():
    program = Program()

    def read():
        for line in sys.stdin:
            GLib.idle_add(program.obey, line)
        GLib.idle_add(Gtk.main_quit)

    threading.Thread(target=read, daemon=True).start()
    Gtk.main()


main()
