"""A new user: from the first start, with an empty home, to the first sentence in a text editor."""
import json
import os
import tempfile
import unittest
from pathlib import Path

from accessible_program import AccessibleProgram
from dictation import Dictation
from keyboard import ALT, SPACE
from setup_guide import NORWEGIAN, SetupGuide
from text_editor import TextEditor
from virtual_desktop import VirtualDesktop

PROGRAM = Path(os.environ["TULVANE_PROGRAM"])
SENTENCE = "Hei, dette er en test."
COPIED = "Det som ble kopiert før"


class FirstRun(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.desktop = VirtualDesktop(folder.name, PROGRAM)
        self.addCleanup(self.desktop.end)
        self.desktop.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"

    def start(self):
        return self.desktop.start(str(PROGRAM))

    def quit(self, program):
        program.terminate()
        self.assertEqual(program.wait(10), 0)

    def press_hotkey(self):
        self.dictation.keyboard.tap(ALT, SPACE)

    def copy(self, text):
        file = self.desktop.folder / "copied"
        file.write_text(text)
        self.desktop.start("xclip", "-quiet", "-selection", "clipboard", "-i", str(file))
        self.desktop.wait(lambda: self.copied() == text, what="the copy")

    def copied(self):
        return self.desktop.ask("xclip", "-selection", "clipboard", "-o")

    def press_too_early(self, page):
        """The hotkey says what is missing, and leads back to the guide."""
        self.desktop.run("xdotool", "windowminimize", self.desktop.windows(NORWEGIAN["title"])[0])
        self.desktop.wait(lambda: not self.desktop.windows(NORWEGIAN["title"]), what="the guide’s leaving")
        self.dictation.keyboard.tap(ALT, SPACE)
        self.desktop.wait(lambda: self.desktop.status()["phase"] == "error", what="the refusal")
        self.desktop.wait(lambda: self.desktop.windows(NORWEGIAN["title"]), what="the guide")
        page.find("push button", NORWEGIAN["download"])

    def test_from_the_first_start_to_the_first_sentence(self):
        program = self.start()
        page = AccessibleProgram(self.desktop)
        guide = SetupGuide(self.desktop, page, NORWEGIAN)
        self.assertIn("3 av 4 fullført", page.texts())
        self.assertEqual(self.desktop.windows("Tulvane"), [])
        self.dictation = Dictation(self.desktop, lambda: self.editor.text())
        self.press_too_early(page)

        self.desktop.install_demo_model()
        guide.wait_until_complete()
        guide.finish()

        self.editor = TextEditor(self.desktop, self.desktop.folder / "Notes.txt")
        self.copy(COPIED)
        arrival = self.dictation.dictate(self.dictation.sound(SENTENCE), self.press_hotkey, self.press_hotkey)
        self.assertEqual(arrival.text, SENTENCE + " ")
        self.assertEqual(self.editor.save(), SENTENCE + " ")
        # The editor takes the clipboard over as soon as it has read it; the user gets it back all the same.
        self.desktop.wait(lambda: self.copied() == COPIED, what="the user’s clipboard")
        figures = json.loads(self.desktop.tulvane("stats", "--json"))
        self.assertEqual((figures["dictations"], figures["words"]), (1, 5))

        self.quit(program)
        again = self.start()  # no longer a new user
        self.desktop.wait(lambda: self.desktop.windows("Tulvane"), what="the window")
        self.assertEqual(self.desktop.windows(NORWEGIAN["title"]), [])
        self.quit(again)


if __name__ == "__main__":
    unittest.main()
