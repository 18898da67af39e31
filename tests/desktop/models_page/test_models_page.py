"""The model is deleted in the middle of a dictation: nothing that was said is lost, and the user is told what to do."""
import os
import subprocess
import tempfile
import unittest
from pathlib import Path

from accessible_program import AccessibleProgram
from virtual_desktop import VirtualDesktop

PROGRAM = Path(os.environ["TULVANE_PROGRAM"])
MODEL = "nb-whisper-medium-q5_0"
MISSING = "The speech model has not been downloaded yet."
KEPT = "The recording is kept in memory until you make the next one."


class ModelsPage(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.desktop = VirtualDesktop(cls.folder.name, PROGRAM, size="1280x900")
        cls.desktop.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        cls.desktop.set(hasCompletedOnboarding=True, appLanguage="en", insertionMethod="clipboardOnly")
        cls.desktop.install_demo_model()
        cls.program = cls.desktop.start(str(PROGRAM), "--page", "models")
        cls.page = AccessibleProgram(cls.desktop)
        cls.page.find("heading", "Speech models")

    @classmethod
    def tearDownClass(cls):
        cls.desktop.end()
        cls.folder.cleanup()

    def setUp(self):
        self.desktop.install_demo_model()
        self.desktop.tulvane("--page", "models")
        self.page.find("push button", "Delete")
        self.desktop.wait_for_phase("idle")
        self.before = self.desktop.status()["historyCount"]

    def file(self):
        return Path(self.folder.name) / f"data/Tulvane/Models/{MODEL}.bin"

    def delete(self):
        """By the mouse, and the question by the keyboard, which stands on the harmless answer."""
        self.page.click("push button", "Delete")
        self.page.find("dialog", "Delete model file")
        self.desktop.key("Tab", "Return")
        self.desktop.wait(lambda: not self.file().exists(), what="the deletion")

    def fails_with(self, message):
        self.desktop.wait(lambda: self.desktop.status()["phase"] == "error", what="the error")
        self.assertEqual(self.desktop.status()["message"], message)

    def test_what_was_said_when_the_model_was_deleted_is_kept_and_transcribed_later(self):
        self.desktop.tulvane("start")
        self.desktop.speak("Hei, dette er en test.")
        self.delete()
        self.assertEqual(self.desktop.status()["phase"], "recording")  # whatever else happens, it goes on
        self.desktop.speak("Hei, dette er en test.")
        self.desktop.tulvane("stop")
        self.fails_with(MISSING)
        self.desktop.tulvane("--page", "home")
        self.page.shows(f"{MISSING} {KEPT}")
        self.assertEqual(self.desktop.status()["historyCount"], self.before)

        self.desktop.install_demo_model()
        self.desktop.wait_for_phase("idle")
        self.page.click("push button", "Try again")
        self.desktop.wait(lambda: self.desktop.status()["historyCount"] == self.before + 1, limit=60,
                          what="the transcript")
        self.desktop.wait_for_phase("notice", "idle")
        text = self.desktop.run("xclip", "-selection", "clipboard", "-o")
        self.assertEqual(text.lower().count("test"), 2, text)
        self.assertIs(self.program.poll(), None)

    def test_without_a_model_another_try_tells_the_same_and_keeps_the_recording(self):
        self.desktop.tulvane("start")
        self.desktop.speak("Hei, dette er en test.")
        self.delete()
        self.desktop.tulvane("stop")
        self.fails_with(MISSING)
        self.desktop.wait_for_phase("idle")
        self.desktop.tulvane("--page", "home")
        self.page.click("push button", "Try again")
        self.fails_with(MISSING)
        self.page.shows(f"{MISSING} {KEPT}")

    def test_the_next_dictation_is_refused_with_the_way_out(self):
        self.delete()
        self.page.shows("Nothing yet – download the selected model to start dictating.")
        refused = subprocess.run([str(PROGRAM), "start"], env=self.desktop.environment, capture_output=True, text=True)
        self.assertEqual(refused.returncode, 1)
        self.assertIn(MISSING, refused.stderr)
        self.desktop.wait(lambda: self.desktop.windows("Set up Tulvane"), what="the guide")
        self.page.click("push button", "Close")
        self.desktop.wait(lambda: not self.desktop.windows("Set up Tulvane"), what="the end of the guide")


if __name__ == "__main__":
    unittest.main()
