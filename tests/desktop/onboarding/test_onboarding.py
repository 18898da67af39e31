"""The setup guide as a new user meets it: an empty home, a hub to download from, a microphone, and a mouse and a
keyboard that work it to its end."""
import json
import os
import shutil
import tempfile
import unittest
from pathlib import Path

from accessible_program import AccessibleProgram
from model_hub import ModelHub
from virtual_desktop import VirtualDesktop

PROGRAM = Path(os.environ["TULVANE_PROGRAM"])
ENTRY = Path(__file__).resolve().parents[3] / "tools/desktop_kit/entry.py"
GUIDE = "Sett opp Tulvane"
# The smallest model of the catalogue: its size there, and where the hub has it.
MODEL, SIZE = "nb-whisper-small-q5_0", 175_000_000
PATH = "NbAiLab/nb-whisper-small/resolve/main/ggml-model-q5_0.bin"
SLOWLY = {"rate": 40_000_000}


class NewUser(unittest.TestCase):
    """A desktop, a hub, and the program just installed. Its language is the one that a new user gets: Norwegian."""

    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.desktop = VirtualDesktop(cls.folder.name, PROGRAM, size="1280x900")
        cls.hub = ModelHub(Path(cls.folder.name) / "hub")
        cls.hub.put_sparse(PATH, SIZE)
        cls.desktop.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        cls.desktop.environment["TULVANE_HUB_URL"] = cls.hub.address
        cls.desktop.set(selectedModelID=MODEL)
        cls.guide = AccessibleProgram(cls.desktop)

    @classmethod
    def tearDownClass(cls):
        cls.desktop.end()
        cls.hub.end()
        cls.folder.cleanup()

    def begin(self):
        """Starts the program as a user does; the guide comes by itself, and alone."""
        program = self.desktop.start(str(PROGRAM))
        self.desktop.wait(lambda: self.desktop.windows(GUIDE), what="the guide")
        self.guide.shows("Velkommen til Tulvane")
        self.assertEqual(self.desktop.windows("Tulvane"), [])
        return program

    def quit(self, program):
        program.terminate()
        self.assertEqual(program.wait(15), 0)

    def press(self, name):
        self.guide.click("push button", name)

    def state(self, number, title, label):
        """Waits until the step of the guide says how it stands."""
        self.guide.find("heading", f"{number}. {title}, {label}")

    def progress(self):
        """How much of the model has come, as the guide says it: "35 MB av 175 MB"."""
        return next((text for text in self.guide.texts() if text.endswith(" av 175 MB")), None)

    def wait_for_progress(self, after=None):
        def changed():
            try:
                now = self.progress()
            except Exception:  # what was being read has gone meanwhile
                return None
            return now if now not in (None, after) else None
        return self.desktop.wait(changed, what="progress")

    def install_what_can_be_loaded(self):
        """In the place of the file of zeros that was downloaded."""
        models = Path(self.folder.name) / "data/Tulvane/Models"
        self.assertEqual((models / f"{MODEL}.bin").stat().st_size, SIZE)
        self.desktop.install_demo_model(MODEL)


class FirstStart(NewUser):
    def test_from_an_empty_home_to_the_first_dictation(self):
        program = self.begin()
        self.state(1, "Mikrofon", "Ferdig")
        self.guide.shows("Tilgang til mikrofonen er gitt")
        self.state(2, "Tilgjengelighet", "Ferdig")
        self.state(3, "Talemodell", "Gjenstår")
        self.state(4, "Hurtigtast", "Ferdig")
        self.guide.shows("3 av 4 fullført")

        self.download()
        self.choose_a_hotkey()
        self.guide.shows("4 av 4 fullført")
        self.guide.shows("Alt er klart. Sett markøren i et tekstfelt og trykk Ctrl+Alt+D.")
        self.dictate_inside_the_guide()
        self.press("Ferdig")
        self.desktop.wait(lambda: not self.desktop.windows(GUIDE), what="the end of the guide")
        self.assertIs(self.desktop.stored("hasCompletedOnboarding"), True)

        self.dictate_into_an_entry()
        self.quit(program)
        self.next_start_shows_the_program()

    def download(self):
        self.hub.script(PATH, SLOWLY)
        self.press("Last ned")
        first = self.wait_for_progress()
        self.wait_for_progress(after=first)
        self.assertTrue(0 < self.guide.value("progress bar", "NB-Whisper Small (q5_0)") < 100)
        # A user who thinks better of it, and then goes on where it stopped.
        self.hub.script(PATH, SLOWLY)
        self.press("Avbryt")
        self.guide.find("push button", "Last ned")
        self.state(3, "Talemodell", "Gjenstår")
        self.press("Last ned")
        self.wait_for_progress()
        self.guide.shows("Talemodellen er installert")
        self.state(3, "Talemodell", "Ferdig")
        asked = [request["Range"] for request in self.hub.requests()]
        self.assertEqual(len(asked), 2)
        self.assertRegex(asked[1], r"^bytes=[1-9]\d+-$")
        self.install_what_can_be_loaded()

    def choose_a_hotkey(self):
        # Everything is done: the guide is at its last step, and this one is a line.
        self.press("Hurtigtast")
        self.guide.click("push button", "Tastekombinasjon")
        self.desktop.wait(lambda: self.guide.description("push button", "Tastekombinasjon") == "Trykk snarveien",
                          what="the field that records")
        self.desktop.key("BackSpace")
        self.state(4, "Hurtigtast", "Gjenstår")
        self.guide.shows("3 av 4 fullført")
        self.guide.click("push button", "Tastekombinasjon")
        self.desktop.key("ctrl+alt+d")
        self.desktop.wait(lambda: self.guide.description("push button", "Tastekombinasjon") == "Ctrl+Alt+D",
                          what="the combination")
        self.state(4, "Hurtigtast", "Ferdig")

    def dictate_inside_the_guide(self):
        self.press("Prøv her")
        self.guide.shows("Trykk Ctrl+Alt+D, si en setning, og trykk en gang til.")
        self.desktop.key("ctrl+alt+d")
        self.desktop.wait_for_phase("recording")
        self.guide.shows("Lytter …")
        self.desktop.speak("Hei, dette er en test.")
        self.desktop.key("ctrl+alt+d")
        self.desktop.wait(lambda: self.desktop.status()["historyCount"] == 1, limit=60, what="the first transcript")
        field = self.guide.find("text", "Prøv her")

        def arrived():
            text = field.get_text_iface()
            return text.get_text(0, text.get_character_count())
        self.desktop.wait(lambda: arrived().strip() != "", what="the words in the guide's own field")
        self.assertRegex(arrived(), r" dette er en test\. ?$")
        self.guide.shows("Det var alt. Slik virker det i alle tekstfelt.")

    def dictate_into_an_entry(self):
        entry = self.desktop.start("/usr/bin/python3", str(ENTRY), stdout=-1)
        self.assertEqual(json.loads(entry.stdout.readline()), None)  # it has the focus
        self.desktop.key("ctrl+alt+d")
        self.desktop.wait_for_phase("recording")
        self.desktop.speak("Hei, dette er en test.")
        self.desktop.key("ctrl+alt+d")
        self.desktop.wait(lambda: self.desktop.status()["historyCount"] == 2, limit=60, what="the transcript")
        arrived = next(text for text in map(json.loads, entry.stdout) if text)
        # What the small demo model makes of the first word is not this test's concern.
        self.assertRegex(arrived, r" dette er en test\. ?$")
        entry.terminate()

    def next_start_shows_the_program(self):
        program = self.desktop.start(str(PROGRAM))
        self.desktop.wait(lambda: self.desktop.windows("Tulvane"), what="the main window")
        self.guide.find("page tab", "Hjem")
        self.assertEqual(self.desktop.windows(GUIDE), [])
        self.quit(program)


class Mishaps(NewUser):
    def setUp(self):
        shutil.rmtree(Path(self.folder.name) / "data", ignore_errors=True)
        (Path(self.folder.name) / "hub/requests").unlink(missing_ok=True)
        self.program = self.begin()

    def tearDown(self):
        self.quit(self.program)

    def recovers(self):
        self.press("Prøv igjen")
        self.guide.shows("Talemodellen er installert")
        self.guide.shows("4 av 4 fullført")
        self.assertFalse(any("HTTP 500" in text for text in self.guide.texts()))

    def test_a_hub_that_fails_is_told_and_tried_again(self):
        self.hub.script(PATH, {"status": 500}, {"status": 500})
        self.press("Last ned")
        self.guide.shows("Serveren svarte med HTTP 500.")
        self.state(3, "Talemodell", "Gjenstår")
        self.press("Prøv igjen")
        self.desktop.wait(lambda: len(self.hub.requests()) == 2, what="the second request")
        self.guide.shows("Serveren svarte med HTTP 500.")
        self.recovers()

    def test_a_page_instead_of_a_model_is_told_and_tried_again(self):
        self.hub.script(PATH, {"status": 200, "body": "<html>Sign in</html>"})
        self.press("Last ned")
        self.desktop.wait(lambda: any("ggml" in text for text in self.guide.texts()), what="the reason")
        self.recovers()

    def test_a_guide_that_is_closed_early_comes_again(self):
        self.guide.shows("3 av 4 fullført")
        self.press("Lukk")
        self.desktop.wait(lambda: not self.desktop.windows(GUIDE), what="the end of the guide")
        self.assertIsNot(self.desktop.stored("hasCompletedOnboarding"), True)
        self.quit(self.program)
        self.program = self.begin()

    def test_a_download_goes_on_while_the_guide_is_closed(self):
        self.hub.script(PATH, SLOWLY)
        self.press("Last ned")
        self.wait_for_progress()
        self.press("Lukk")
        self.desktop.wait(lambda: not self.desktop.windows(GUIDE), what="the end of the guide")
        installed = Path(self.folder.name) / f"data/Tulvane/Models/{MODEL}.bin"
        self.desktop.wait(installed.exists, limit=30, what="the model")
        self.desktop.tulvane("--page", "home")
        self.desktop.wait(lambda: self.desktop.windows(GUIDE) or self.desktop.windows("Tulvane"), what="a window")
        self.assertEqual(len(self.hub.requests()), 1)


if __name__ == "__main__":
    unittest.main()
