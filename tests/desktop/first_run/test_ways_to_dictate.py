"""A dictation through each of the ways there are, its text in a text editor."""
import os
import tempfile
import unittest
from pathlib import Path

from dictation import Dictation
from docked_icon import DockedIcon, start_bar
from keyboard import ALT, RIGHT_CONTROL, SPACE
from text_editor import TextEditor
from virtual_desktop import VirtualDesktop

PROGRAM = Path(os.environ["TULVANE_PROGRAM"])
SENTENCE = "Hei, dette er en test."


class WaysToDictate(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)
        cls.desktop = VirtualDesktop(cls.folder.name, PROGRAM)
        cls.addClassCleanup(cls.desktop.end)
        cls.desktop.install_demo_model()
        cls.desktop.set(hasCompletedOnboarding=True, appLanguage="en", language="no")
        start_bar(cls.desktop)
        cls.desktop.start(str(PROGRAM), "--background")
        cls.desktop.wait(lambda: cls.desktop.ask(str(PROGRAM), "status"), what="the program")
        cls.icon = DockedIcon(cls.desktop)
        cls.editor = TextEditor(cls.desktop, cls.desktop.folder / "Notes.txt")
        cls.dictation = Dictation(cls.desktop, cls.editor.text)
        cls.sound = cls.dictation.sound(SENTENCE)

    def dictate(self, begin, end):
        before = self.editor.text()
        arrival = self.dictation.dictate(self.sound, begin, end)
        self.assertEqual(arrival.text, SENTENCE + " ")
        self.assertEqual(self.editor.text(), before + SENTENCE + " ")

    def test_the_hotkey_pressed_twice(self):
        self.desktop.set(hotkeyMode="toggle", modifierHotkey="none")
        keys = self.dictation.keyboard
        self.dictate(lambda: keys.tap(ALT, SPACE), lambda: keys.tap(ALT, SPACE))

    def test_the_hotkey_held(self):
        self.desktop.set(hotkeyMode="hold", modifierHotkey="none")
        keys = self.dictation.keyboard
        self.dictate(lambda: keys.press(ALT, SPACE), lambda: keys.release(ALT, SPACE))

    def test_a_single_key_held(self):
        self.desktop.set(hotkeyMode="hold", modifierHotkey="rightControl")
        keys = self.dictation.keyboard
        self.dictate(lambda: keys.press(RIGHT_CONTROL), lambda: keys.release(RIGHT_CONTROL))

    def test_a_single_key_pressed_twice(self):
        self.desktop.set(hotkeyMode="toggle", modifierHotkey="rightControl")
        keys = self.dictation.keyboard
        self.dictate(lambda: keys.tap(RIGHT_CONTROL), lambda: keys.tap(RIGHT_CONTROL))

    def choose_line(self, from_below):
        """Lines above may be dictations, whose number grows; those below are the same in idleness and recording."""
        self.icon.open_menu()
        self.icon.choose(*["Up"] * from_below)

    def test_the_menu_of_the_icon_in_the_tray(self):
        # Quit, the four windows, language and mode; then "Start dictation", or below "Stop dictation" "Cancel recording".
        self.dictate(lambda: self.choose_line(8), lambda: self.choose_line(9))

    def test_the_command_line(self):
        self.dictate(lambda: self.desktop.tulvane("start"), lambda: self.desktop.tulvane("stop"))
        self.dictate(lambda: self.desktop.tulvane("toggle"), lambda: self.desktop.tulvane("toggle"))


if __name__ == "__main__":
    unittest.main()
