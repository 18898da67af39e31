"""Dictations on GNOME."""
import os
import subprocess
import sys
import time
import unittest
from pathlib import Path

from gnome_dictation import GnomeDictation
from wayland_dictation import CONTROL, SENTENCE, TARGETS, Field, WaylandDictation

from sentences import SENTENCES, complaints

GTK3 = ("/usr/bin/python3", str(TARGETS / "gtk_target.py"))
END, A, C, RETURN, SUPER, F = 107, 30, 46, 28, 125, 33


class Pasted(GnomeDictation):
    """With the clipboard and keys."""

    def test_into_a_terminal_that_is_known_by_its_program(self):
        file = self.desktop.folder / "vte"
        process = self.desktop.start(*GTK3, "terminal", "/usr/bin/python3", str(TARGETS / "terminal_reader.py"), str(file),
                                     stdin=subprocess.PIPE)
        self.addCleanup(process.terminate)
        self.desktop.wait(file.exists, what="the terminal")
        time.sleep(0.5)
        self.hold()
        self.desktop.wait(lambda: file.read_text(), limit=60, what="the text")
        self.desktop.wait_for_phase("idle")
        self.assertEqual(file.read_text(), SENTENCE + " ")

    def test_what_a_program_of_wayland_has_copied_is_there_again(self):
        field = Field(self.desktop, *GTK3, "view")
        self.addCleanup(field.end)
        self.desktop.press(C)
        self.desktop.wait(lambda: field.text() == "c", what="a key")
        self.desktop.press(CONTROL, A)
        self.desktop.press(CONTROL, C)
        self.desktop.wait(lambda: self.paste() == b"c", what="what was copied")
        self.desktop.press(END)
        self.hold()
        self.desktop.wait(lambda: field.text() != "c", limit=60, what="the text")
        self.desktop.wait_for_phase("idle")
        self.assertEqual(field.text(), "c" + SENTENCE + " ")
        self.desktop.wait(lambda: self.paste() == b"c", what="the clipboard of before")

    def test_the_indicator_is_above_a_full_screen_window(self):
        self.desktop.run("gsettings", "set", "org.gnome.desktop.wm.keybindings", "toggle-fullscreen", "['<Super>f']")
        field = Field(self.desktop, *GTK3, "view")
        self.addCleanup(field.end)
        time.sleep(0.5)
        self.desktop.press(SUPER, F)
        time.sleep(0.7)
        self.press_hotkey()
        self.desktop.wait_for_phase("recording")
        time.sleep(0.8)
        self.assertTrue(field.has_focus())
        file = Path(os.environ.get("TULVANE_PICTURES", self.folder.name)) / "gnome-full-screen.png"
        self.desktop.picture(file)
        self.press_hotkey()
        self.assertGreater(self.dark_share(file), 0.3)
        self.assertGreater(self.light_at_the_top(file), 0.9, "the desktop's bar is gone under a full-screen window")
        self.desktop.wait_for_phase("idle", "notice", "error")

    @staticmethod
    def light_at_the_top(file):
        return float(subprocess.run(["convert", str(file), "-crop", "1280x20+0+0", "-colorspace", "Gray", "-threshold",
                                     "60%", "-format", "%[fx:mean]", "info:"], capture_output=True, text=True,
                                    check=True).stdout)


class Committed(GnomeDictation):
    """By the input method where the field takes it."""

    @classmethod
    def prepare(cls):
        super().prepare()
        cls.desktop.set(insertionMethod="accessibilityThenPaste")

    def test_every_sentence_of_the_show(self):
        field = Field(self.desktop, *GTK3, "view")
        self.addCleanup(field.end)
        self.addCleanup(self.desktop.set, language="no")
        arrived = []
        for language, voice, said in SENTENCES:
            self.desktop.set(language=language)
            before = field.text()
            self.speak(self.sound_of(said, voice))
            self.desktop.wait(lambda: field.text() != before, limit=60, what=said)
            self.desktop.wait_for_phase("idle")
            arrived.append(field.text()[len(before):])
            self.desktop.press(RETURN)
            self.desktop.wait(lambda: field.text().endswith("\n"), what="the new line")
        self.assertEqual(complaints(arrived, field.text().removesuffix("\n")), [])

    def test_the_users_engine_is_back(self):
        self.test_into_gtk3()
        self.assertIn(self.desktop.ask("ibus", "engine").strip(), ("", "xkb:us::eng"))


class Held(GnomeDictation):
    """The key is held while one speaks."""

    MODE = "hold"

    speak = WaylandDictation.speak

    @classmethod
    def only(cls, *names):
        for name in dir(cls):
            if name.startswith("test_") and name not in names:
                setattr(cls, name, None)


Held.only("test_into_gtk4", "test_the_indicator_is_seen_and_takes_no_focus")
for kind in (Pasted, Committed):  # it holds the key
    kind.test_the_indicator_is_seen_and_takes_no_focus = None
del GnomeDictation, WaylandDictation, kind

if __name__ == "__main__":
    sys.exit(unittest.main())
