"""What may go wrong in a dictation on GNOME: nothing is lost, nothing is claimed that did not happen, and the user's input
method is the user's."""
import json
import os
import signal
import subprocess
import sys
import threading
import time
import unittest
from pathlib import Path

from gnome_dictation import GnomeDictation
from wayland_dictation import PROGRAM, SENTENCE, TARGETS, Field, WaylandDictation

GTK3 = ("/usr/bin/python3", str(TARGETS / "gtk_target.py"), "view")
SEMICOLON, SHIFT, SUPER, SPACE, LEFT_ALT = 39, 42, 125, 57, 56


class Faults(GnomeDictation):
    @classmethod
    def prepare(cls):
        super().prepare()
        cls.desktop.set(insertionMethod="accessibilityThenPaste")

    def setUp(self):
        self.desktop.set(insertionMethod="accessibilityThenPaste")

    def field(self):
        field = Field(self.desktop, *GTK3)
        self.addCleanup(field.end)
        return field

    def record(self):
        """Up to the key that stops, which is not pressed."""
        self.press_hotkey()
        self.desktop.wait_for_phase("recording")
        self.desktop.run("paplay", "--device=micsink", str(self.sound))

    def is_told(self):
        """The user is told that the text waits on the clipboard, where it is."""
        self.desktop.wait_for_phase("notice")
        self.assertEqual(self.desktop.status()["message"], "Copied to clipboard")
        self.desktop.wait(lambda: self.paste().decode().strip() == SENTENCE, what="the text on the clipboard")
        self.desktop.wait_for_phase("idle")

    def test_an_editor_that_closes_before_the_text_comes(self):
        for method in ("paste", "accessibilityThenPaste"):
            with self.subTest(method):
                self.desktop.set(insertionMethod=method)
                field = Field(self.desktop, *GTK3)
                self.record()
                self.press_hotkey()
                field.process.kill()
                field.process.wait()
                self.is_told()

    def test_an_editor_that_reads_no_clipboard(self):
        self.desktop.set(insertionMethod="paste")
        field = self.field()
        field.process.stdin.write(json.dumps({"id": 999, "do": "readLate", "after": -1}) + "\n")
        field.process.stdin.flush()
        self.record()
        self.press_hotkey()
        self.is_told()
        self.assertEqual(field.text(), "")

    def test_a_modifier_that_is_held_down(self):
        field = self.field()
        self.record()
        self.press_hotkey()
        self.desktop.down(SHIFT)
        self.addCleanup(self.desktop.up, SHIFT)
        self.desktop.wait_for_phase("idle", "notice")
        self.assertEqual(field.text(), SENTENCE + " ")

    def test_a_modifier_that_is_held_down_and_keys_that_it_spoils(self):
        self.desktop.set(insertionMethod="paste")
        field = self.field()
        self.record()
        self.press_hotkey()
        self.desktop.down(LEFT_ALT)
        try:
            self.is_told()
        finally:
            self.desktop.up(LEFT_ALT)
        self.assertEqual(field.text(), "")

    def test_a_locked_screen(self):
        field = self.field()
        self.record()
        self.desktop.lock(True)
        try:
            self.desktop.wait_for_phase("idle", "notice")
            self.desktop.wait(lambda: self.desktop.status()["locked"], what="the lock")
            self.press_hotkey()
            time.sleep(1)
            self.assertEqual(self.phase(), "idle")
            self.assertEqual(field.text(), "")
            self.assertGreater(self.desktop.status()["historyCount"], 0)
        finally:
            self.desktop.lock(False)
        self.desktop.wait(lambda: not self.desktop.status()["locked"], what="the end of the lock")

    def test_the_desktop_refuses_remote_control(self):
        self.desktop.set(insertionMethod="paste")
        field = self.field()
        self.record()
        self.desktop.refuse_remote_control(True)
        try:
            self.desktop.ask(str(PROGRAM), "stop")  # the test's keyboard is refused as well
            self.is_told()
        finally:
            self.desktop.refuse_remote_control(False)
        self.assertEqual(field.text(), "")


class Engine(threading.Thread):
    """Which engine of the input method is in force, as soon as it is."""

    def __init__(self, desktop):
        super().__init__(daemon=True)
        self.process = desktop.start("/usr/bin/python3", str(Path(__file__).parent / "engine_names.py"),
                                     desktop.run("ibus", "address").strip(), stdout=subprocess.PIPE)
        self.name, self.times = self.process.stdout.readline().strip(), 0
        self.start()

    def run(self):
        for line in self.process.stdout:
            self.name = line.strip()
            self.times += self.is_ours()  # it may be over before anybody looks

    def is_ours(self):
        return self.name == "tulvane"


class Ends(GnomeDictation):
    """Something ends while the program is the input method."""

    @classmethod
    def prepare(cls):
        super().prepare()
        cls.desktop.set(insertionMethod="accessibilityThenPaste")

    def setUp(self):
        self.engine = Engine(self.desktop)
        self.addCleanup(self.engine.process.kill)
        self.field = Field(self.desktop, *GTK3)
        self.addCleanup(self.field.end)

    def start_program(self):
        self.desktop.start_logged("tulvane", str(PROGRAM), "--background")
        self.desktop.wait(lambda: self.desktop.ask(str(PROGRAM), "status"), what="the program")
        self.desktop.wait(lambda: not self.desktop.status()["modelLoading"], what="the model")

    def when_committing(self, end):
        """Dictates, and calls `end` as soon as the program is the input method."""
        times = self.engine.times
        self.desktop.tulvane("start")
        self.desktop.wait_for_phase("recording")
        self.desktop.run("paplay", "--device=micsink", str(self.sound))
        self.desktop.tulvane("stop")
        self.desktop.wait(lambda: self.engine.times > times, limit=30, what="our engine", pause=0.001)
        end()

    def expect_the_users_engine(self, key="ø"):
        self.desktop.wait(lambda: not self.engine.is_ours(), what="the user's engine")
        before = self.field.text()
        self.desktop.press(SEMICOLON)
        self.desktop.wait(lambda: self.field.text().endswith(key), what=f"{key} after {before}")

    def signal_program(self, number):
        def send():
            for process in self.desktop.processes("tulvane-desktop"):
                os.kill(process, number)
        self.when_committing(send)
        self.desktop.wait(lambda: not self.desktop.processes("tulvane-desktop"), what="the program's end")
        try:
            self.expect_the_users_engine()
        finally:
            self.start_program()

    def test_the_program_is_killed(self):
        self.signal_program(signal.SIGKILL)

    def test_the_program_crashes(self):
        self.signal_program(signal.SIGSEGV)

    def test_the_program_is_asked_to_end(self):
        self.signal_program(signal.SIGTERM)

    def test_a_second_layout(self):
        def set_layouts(*names):
            self.desktop.run("gsettings", "set", "org.gnome.desktop.input-sources", "sources",
                             str([("xkb", name) for name in names]))
            time.sleep(0.7)  # the shell sets its engine anew
        set_layouts("no", "us")
        try:
            self.desktop.press(SUPER, SPACE)
            self.desktop.wait(lambda: self.desktop.press(SEMICOLON) or self.field.text().endswith(";"), what="the layout",
                              pause=0.3)
            self.when_committing(lambda: None)
            self.desktop.wait_for_phase("idle")
            self.expect_the_users_engine(";")
            self.assertIn(SENTENCE, self.field.text())
        finally:
            set_layouts("no")

    def test_the_service_is_killed(self):
        """The last, since the shell of this desktop starts no other."""
        self.when_committing(self.desktop.kill_input_method)
        self.desktop.wait_for_phase("idle", "notice")
        if self.phase() == "notice":
            self.desktop.wait(lambda: self.paste().decode().strip() == SENTENCE, what="the text on the clipboard")
        else:
            self.assertIn(SENTENCE, self.field.text())
        # The next one is pasted.
        before = self.field.text()
        self.desktop.wait_for_phase("idle")
        self.hold()
        self.desktop.wait(lambda: self.field.text() != before, limit=60, what="the text")
        self.desktop.wait_for_phase("idle")
        self.assertEqual(self.field.text(), before + SENTENCE + " ")


for kind in (Faults, Ends):  # what an ordinary dictation does is another suite's
    for name in dir(WaylandDictation):
        if name.startswith("test_"):
            setattr(kind, name, None)
del GnomeDictation, WaylandDictation, kind

if __name__ == "__main__":
    sys.exit(unittest.main())
