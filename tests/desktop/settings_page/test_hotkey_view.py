"""How dictation is started and stopped, chosen on the settings page by mouse and keyboard; each choice is then tried
with real keys."""
import os
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

from accessible_program import AccessibleProgram
from bell import BellListener
from virtual_desktop import VirtualDesktop

PROGRAM = Path(os.environ["TULVANE_PROGRAM"])
FIELD = ("push button", "Key combination")
# Taken by the window manager, which hides every window at it.
TAKEN = "ctrl+alt+x"
TAKEN_KEYS = '<keybind key="C-A-x"><action name="ToggleShowDesktop"/></keybind>'
RULE = "It must include Super, Ctrl or Alt, or be a function key such as F5. Letters alone, Shift alone and Fn " \
       "alone are not accepted – the field just beeps."
MODES = [("toggle", "Toggle (press to start, press to stop)",
          "Press once to start listening, press again to stop and insert the text."),
         ("hold", "Hold to talk", "Listens only while the key is held. A very short tap cancels."),
         ("hybrid", "Hold to talk, tap to toggle", "Hold to talk, or tap briefly to start and tap again to stop.")]


class HotkeyView(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.desktop = VirtualDesktop(cls.folder.name, PROGRAM, size="1280x900", keys=TAKEN_KEYS)
        cls.desktop.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        cls.desktop.run("xset", "r", "rate", "200", "30")
        cls.desktop.install_demo_model()
        cls.desktop.set(hasCompletedOnboarding=True, appLanguage="en", insertionMethod="clipboardOnly")
        cls.page = AccessibleProgram(cls.desktop)
        cls.bell = BellListener(cls.desktop.display)
        cls.begin()

    @classmethod
    def tearDownClass(cls):
        cls.bell.close()
        cls.desktop.end()
        cls.folder.cleanup()

    @classmethod
    def begin(cls):
        cls.program = cls.desktop.start(str(PROGRAM), "--page", "settings")
        cls.page.find(*FIELD)
        cls.window = cls.desktop.wait(lambda: cls.desktop.windows("Tulvane"), what="the window")[0]

    @classmethod
    def end(cls):
        cls.program.terminate()
        cls.program.wait(15)

    def setUp(self):
        self.desktop.set(hotkeyMode="toggle", modifierHotkey="none")
        self.record("alt+space", "Alt+Space")
        self.bell.rings()

    def shown(self):
        return self.page.description(*FIELD)

    def wait_until_registered(self):
        """A recorded combination works once its key is up."""
        self.desktop.wait(lambda: "is registered" in self.doctor(), what="the registration")

    def doctor(self):
        return subprocess.run([str(PROGRAM), "doctor"], env=self.desktop.environment, capture_output=True,
                              text=True).stdout

    def wait_until_shown(self, text):
        self.desktop.wait(lambda: self.shown() == text, what=f"“{text}” in the field")

    def begin_recording(self):
        self.page.click(*FIELD)
        self.wait_until_shown("Press shortcut")

    def record(self, keys, shown):
        self.begin_recording()
        self.desktop.key(keys)
        self.wait_until_shown(shown)
        self.wait_until_registered()

    def choose_mode(self, mode, title):
        self.page.click("radio button", title)
        self.desktop.wait(lambda: self.desktop.stored("hotkeyMode") == mode, what=mode)

    def focused(self):
        return self.desktop.xdotool("getwindowfocus")

    def is_desktop_shown(self):
        return self.desktop.run("xprop", "-root", "_NET_SHOWING_DESKTOP").strip().endswith("= 1")

    def expect_taken_key_is_the_window_managers(self):
        self.desktop.key(TAKEN)
        self.desktop.wait(self.is_desktop_shown, what="the bare desktop")
        self.desktop.key(TAKEN)
        self.desktop.wait(lambda: not self.is_desktop_shown(), what="the windows")
        self.desktop.xdotool("windowactivate", "--sync", self.window)

    def starts(self, keys):
        self.desktop.key(keys)
        self.desktop.wait_for_phase("recording")

    def stops(self, keys):
        self.desktop.key(keys)
        self.desktop.wait(lambda: self.desktop.status()["phase"] != "recording", what="the end of the recording")

    def cancel(self):
        self.desktop.tulvane("cancel")
        self.desktop.wait_for_phase("idle")

    def test_each_mode_says_what_it_means_and_does_it(self):
        for mode, title, explanation in MODES:
            self.assertEqual(self.page.description("radio button", title), explanation)
        self.choose_mode("hold", "Hold to talk")
        self.desktop.xdotool("keydown", "alt", "keydown", "space")
        self.desktop.wait_for_phase("recording")
        time.sleep(0.4)  # longer than a tap
        self.desktop.xdotool("keyup", "space", "keyup", "alt")
        self.desktop.wait(lambda: self.desktop.status()["phase"] != "recording", what="the end of the recording")
        self.choose_mode("hybrid", "Hold to talk, tap to toggle")
        self.starts("alt+space")
        self.stops("alt+space")
        self.choose_mode("toggle", "Toggle (press to start, press to stop)")
        self.starts("alt+space")
        self.stops("alt+space")

    def test_a_new_combination_works_and_the_old_one_does_not(self):
        self.record("ctrl+alt+d", "Ctrl+Alt+D")
        self.desktop.key("alt+space")
        self.starts("ctrl+alt+d")  # which would have ended what the old one had begun
        self.cancel()

    def test_what_is_recorded_begins_nothing_however_long_it_is_held(self):
        self.begin_recording()
        self.desktop.xdotool("keydown", "ctrl", "keydown", "alt", "keydown", "d")
        try:
            self.wait_until_shown("Ctrl+Alt+D")
            time.sleep(1)  # many times as long as the keyboard takes to repeat a key
            self.assertEqual(self.desktop.status()["phase"], "idle")
        finally:
            self.desktop.xdotool("keyup", "d", "keyup", "alt", "keyup", "ctrl")
        self.wait_until_registered()
        self.starts("ctrl+alt+d")
        self.cancel()

    def test_what_the_window_manager_uses_is_seen_and_refused_with_the_reason(self):
        self.begin_recording()
        focus = self.focused()
        self.desktop.key(TAKEN)
        self.page.shows("The system already uses this key combination. What the system uses can be changed in its "
                        "keyboard settings.")
        self.assertEqual(self.focused(), focus)
        self.assertFalse(self.is_desktop_shown())
        self.assertEqual(self.shown(), "Press shortcut")
        self.desktop.key("Escape")
        self.wait_until_shown("Alt+Space")
        self.expect_taken_key_is_the_window_managers()

    def test_a_click_elsewhere_gives_the_keyboard_back(self):
        self.begin_recording()
        self.page.click("check box", "Sounds")
        self.wait_until_shown("Alt+Space")
        self.expect_taken_key_is_the_window_managers()

    def test_what_is_no_combination_beeps_and_the_rule_is_there_to_be_read(self):
        self.assertIn(RULE, self.page.texts())
        self.begin_recording()
        for count, key in enumerate(["d", "shift+d", "shift"], 1):
            self.desktop.key(key)
            rings = 0

            def rung():
                nonlocal rings
                rings += self.bell.rings()
                return rings
            self.desktop.wait(rung, what=f"the beep at {key}")
            self.assertEqual(rings, 1, count)
            self.assertEqual(self.shown(), "Press shortcut")
        self.desktop.key("Escape")
        self.wait_until_shown("Alt+Space")
        self.assertEqual(self.bell.rings(), 0)

    def test_backspace_clears_and_nothing_starts_any_more(self):
        self.begin_recording()
        self.desktop.key("BackSpace")
        self.wait_until_shown("Record shortcut")
        self.assertIs(self.desktop.stored("KeyboardShortcuts_dictate"), False)
        self.assertEqual(self.desktop.status()["hotkey"], "No hotkey set")
        self.desktop.key("alt+space")
        self.desktop.tulvane("start")
        self.desktop.wait_for_phase("recording")
        self.desktop.key("alt+space")  # would end it
        self.assertEqual(self.desktop.status()["phase"], "recording")
        self.cancel()

    def test_escape_changes_nothing(self):
        self.begin_recording()
        self.desktop.key("Escape")
        self.wait_until_shown("Alt+Space")
        self.starts("alt+space")
        self.cancel()

    def pick_single_key(self, steps, value):
        self.page.focus("combo box", "Hold a single key")
        self.desktop.key("Return")
        time.sleep(0.3)  # the list is no part of the accessibility tree
        self.desktop.key("Home", *["Down"] * steps, "Return")
        self.desktop.wait(lambda: self.desktop.stored("modifierHotkey") == value, what=value)

    def test_a_single_key_works_beside_the_combination(self):
        self.pick_single_key(3, "rightControl")
        self.page.shows("Input Monitoring granted")
        self.starts("Control_R")
        self.stops("alt+space")
        self.desktop.wait_for_phase("idle")
        # As a part of a combination it begins nothing.
        self.begin_recording()
        self.desktop.xdotool("keydown", "Control_R", "key", "d", "keyup", "Control_R")
        self.wait_until_shown("Ctrl+D")
        self.wait_until_registered()
        self.assertEqual(self.desktop.status()["phase"], "idle")
        self.pick_single_key(0, "none")
        self.desktop.key("Control_R")
        self.starts("ctrl+d")
        self.cancel()

    def test_where_the_desktop_tells_of_no_single_key_reading_the_keyboard_is_explained_and_off(self):
        self.end()
        self.desktop.environment["XDG_SESSION_TYPE"] = "wayland"  # which lets nobody watch keys
        try:
            self.begin()
            self.pick_single_key(1, "rightOption")
            self.page.shows("This desktop tells programs of no single key. Tulvane can read the keyboard itself: then it "
                            "sees every key that you press in any program, passwords too. It looks for the single key "
                            "alone, and keeps and sends nothing.")
            self.page.shows("Let Tulvane read the keyboard")
            self.assertFalse(self.desktop.stored("readsKeyboards"))
            if not Path("/dev/input").exists():
                self.page.shows("No keyboard can be read on this desktop. Use a key combination as the hotkey.")
                self.page.find("push button", "Open Input Monitoring settings…")
                self.page.find("push button", "Reset & grant again")
        finally:
            self.end()
            self.desktop.environment["XDG_SESSION_TYPE"] = "x11"
            self.begin()


if __name__ == "__main__":
    unittest.main()
