"""The main window of the real program: a walk through its accessibility tree, what screen readers hear announced, and
the home page and the history worked by mouse and keyboard."""
import json
import os
import tempfile
import time
import unittest
from pathlib import Path

from accessible_program import AccessibleProgram
from virtual_desktop import VirtualDesktop

PROGRAM = Path(os.environ["TULVANE_PROGRAM"])
ENTRY = Path(__file__).resolve().parents[3] / "tools/desktop_kit/entry.py"
SENTENCE = "Hei, dette er en test."
PAGES = {"home": "Home", "models": "Models", "history": "History", "statistics": "Statistics", "settings": "Settings",
         "about": "About"}
# What takes the keyboard, and so has to say what it is.
WORKED = {"push button", "check box", "radio button", "combo box", "spin button", "page tab", "link", "text", "entry",
          "list item", "toggle button"}


class MainWindow(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.desktop = VirtualDesktop(cls.folder.name, PROGRAM, size="1280x900")
        cls.desktop.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        cls.desktop.set(hasCompletedOnboarding=True, appLanguage="en")
        cls.desktop.install_demo_model()
        cls.program = cls.desktop.start(str(PROGRAM), "--page", "home")
        cls.page = AccessibleProgram(cls.desktop)
        cls.page.find("page tab", "Home")

    @classmethod
    def tearDownClass(cls):
        cls.desktop.end()
        cls.folder.cleanup()

    def setUp(self):
        self.desktop.wait_for_phase("idle")

    def open(self, page):
        self.desktop.tulvane("--page", page)
        self.desktop.wait(lambda: self.page.find("page tab", PAGES[page]).get_state_set().contains(
            self.page.atspi.StateType.SELECTED), what=page)

    def dictate(self, text=SENTENCE):
        before = self.desktop.status()["historyCount"]
        self.desktop.tulvane("start")
        self.desktop.speak(text)
        self.desktop.tulvane("stop")
        self.desktop.wait(lambda: self.desktop.status()["historyCount"] == before + 1, limit=60, what="the transcript")
        self.desktop.wait_for_phase("idle")

    def flaws(self, node):
        """What a screen reader would miss of this control, in words."""
        role, name = node.get_role_name(), node.get_name()
        states = node.get_state_set()
        has = lambda state: states.contains(getattr(self.page.atspi.StateType, state))
        if role in WORKED and not name:
            yield f"a {role} without a name"
        if role in ("unknown", "invalid", "redundant object"):
            yield f"“{name}” without a role"
        if role in WORKED and role != "list item" and has("SENSITIVE") and not has("FOCUSABLE"):
            yield f"the {role} “{name}” never has the focus"
        if role in ("spin button", "progress bar"):
            value = node.get_value_iface()
            if value is None or value.get_maximum_value() <= value.get_minimum_value():
                yield f"the {role} “{name}” without a range"

    def test_every_control_has_name_role_value_and_focus(self):
        self.dictate()
        flaws, seen = [], set()
        for page in PAGES:
            self.open(page)
            # Screen by screen: what has to be scrolled to does not show before.
            for _ in range(5):
                for node in self.page._all():
                    if node.get_state_set().contains(self.page.atspi.StateType.SHOWING):
                        seen.add(node.get_role_name())
                        flaws += [f"{page}: {flaw}" for flaw in self.flaws(node)]
                self.desktop.key("Next")
                time.sleep(0.2)
        self.assertEqual(flaws, [])
        self.assertLessEqual({"push button", "check box", "combo box", "spin button", "page tab", "text"}, seen)

    def test_screen_readers_hear_the_phases_and_nothing_takes_the_focus(self):
        from gi.repository import GLib
        self.open("about")
        heard = []
        listener = self.page.atspi.EventListener.new(lambda event: heard.append(str(event.any_data)))
        self.assertTrue(listener.register("object:announcement"))
        self.addCleanup(lambda: listener.deregister("object:announcement"))
        entry = self.desktop.start("/usr/bin/python3", str(ENTRY), stdout=-1)
        self.addCleanup(entry.terminate)
        self.assertEqual(json.loads(entry.stdout.readline()), None)  # it has the focus
        self.dictate()
        context = GLib.MainContext.default()

        def has_heard_all():
            while context.pending():
                context.iteration(False)
            return heard[:3] == ["Listening…", "Transcribing…", "Inserting…"]
        self.desktop.wait(has_heard_all, what=f"the phases, not {heard}")
        self.assertFalse(any("test" in one for one in heard), heard)
        # The text reached the entry: the focus has stayed with it.
        self.assertIn("test", next(text for text in map(json.loads, entry.stdout) if text))

    def test_the_microphone_is_named_and_tested_and_nothing_of_it_is_kept(self):
        self.open("home")
        before = self.desktop.status()
        self.page.click("push button", "Test the microphone")
        self.page.shows("Say something…")
        self.desktop.speak(SENTENCE)
        self.page.shows("The microphone hears you.")
        self.assertEqual(self.desktop.status(), before)
        self.assertFalse(self.page.has("label", "No microphone"))

    def test_a_checklist_row_leads_to_its_control(self):
        self.open("home")
        self.page.click("push button", "Add names and jargon to your vocabulary")
        field = self.page.find("text", "Vocabulary")
        self.desktop.wait(lambda: field.get_state_set().contains(self.page.atspi.StateType.FOCUSED),
                          what="the focus of the field")
        self.desktop.xdotool("type", "Fjord")
        self.desktop.wait(lambda: self.desktop.stored("vocabularyPrompt") == "Fjord", what="the vocabulary")

    def test_a_text_of_the_history_is_inserted_again_into_the_window_before(self):
        self.open("history")
        entry = self.desktop.start("/usr/bin/python3", str(ENTRY), stdout=-1)
        self.addCleanup(entry.terminate)
        self.assertEqual(json.loads(entry.stdout.readline()), None)
        self.dictate()
        texts = (json.loads(line) for line in entry.stdout)
        first = next(text for text in texts if text)
        self.open("history")
        self.page.click("push button", "Insert again")
        again = next(text for text in texts if text and len(text) > len(first) + 5)
        self.assertEqual(again.lower().count("test"), 2, again)
        self.desktop.wait(lambda: not self.desktop.windows("Tulvane"), what="the end of our windows")

    def test_a_text_is_corrected_for_copying(self):
        self.dictate()
        self.open("history")
        self.page.click("push button", "Correct")
        self.page.find("text", "Correct the text")
        self.desktop.xdotool("type", " Rettet")
        self.page.click("push button", "Copy")
        self.desktop.wait(lambda: self.desktop.run("xclip", "-selection", "clipboard", "-o").endswith("Rettet"),
                          what="the corrected text on the clipboard")


if __name__ == "__main__":
    unittest.main()
