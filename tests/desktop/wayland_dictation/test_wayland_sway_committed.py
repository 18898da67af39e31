"""Dictations on sway that are written into the field: over accessibility, else by the input method."""
import unittest

from wayland_dictation import TARGETS, Field, WaylandDictation


class SwayCommitted(WaylandDictation):
    KIND = "sway"

    @classmethod
    def prepare(cls):
        cls.desktop.set(insertionMethod="accessibilityThenPaste")

    def copy(self, data, kind):
        self.copier = self.copy_until_taken(data, kind)

    def dictate_without_clipboard_into(self, field):
        self.dictate_into(field)
        self.assertIsNone(self.copier.poll(), "the clipboard was written to\n" + self.said())

    def test_into_gtk3(self):
        self.dictate_without_clipboard_into(Field(self.desktop, "/usr/bin/python3", str(TARGETS / "gtk_target.py"), "view"))

    def test_into_gtk3_that_shows_nothing_over_accessibility(self):
        self.dictate_without_clipboard_into(Field(self.desktop, "/usr/bin/python3", str(TARGETS / "gtk_target.py"), "view",
                                                  NO_AT_BRIDGE="1"))

    def test_into_gtk4_that_shows_nothing_over_accessibility(self):
        self.dictate_without_clipboard_into(Field(self.desktop, "/usr/bin/python3", str(TARGETS / "gtk4_target.py"),
                                                  GTK_A11Y="none"))

    def test_into_a_terminal(self):
        super().test_into_a_terminal()
        self.assertIsNotNone(self.copier.poll(), "it shows nothing of its text, so that it is pasted into")

    test_a_picture_on_the_clipboard_is_there_again = None
    test_the_indicator_is_seen_and_takes_no_focus = None
    test_where_no_program_is_in_front_the_text_waits_on_the_clipboard = None


del WaylandDictation

if __name__ == "__main__":
    unittest.main()
