"""Dictations on KDE's compositor whose text goes straight into the field, over accessibility."""
import unittest

from wayland_dictation import WaylandDictation


class KWinCommitted(WaylandDictation):
    KIND = "kwin"

    @classmethod
    def prepare(cls):
        cls.desktop.set(insertionMethod="accessibilityThenPaste")

    def copy(self, data, kind):
        copier = self.copy_until_taken(data, kind)
        # Cleanups run last first, so that it is still to be ended.
        self.addCleanup(lambda: self.assertIsNone(copier.poll(), "the clipboard was written to\n" + self.said()))

    test_a_picture_on_the_clipboard_is_there_again = None
    test_doctor_finds_nothing_to_do = None
    test_into_a_terminal = None  # which shows nothing of its text, so that it is pasted into
    test_the_indicator_is_seen_and_takes_no_focus = None
    test_where_no_program_is_in_front_the_text_waits_on_the_clipboard = None


del WaylandDictation

if __name__ == "__main__":
    unittest.main()
