"""Every control of the settings page: worked as a screen reader or a keyboard works it, its stored value read back,
and its effect seen."""
import os
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

from accessible_program import AccessibleProgram
from virtual_desktop import VirtualDesktop

PROGRAM = Path(os.environ["TULVANE_PROGRAM"])
SENTENCE = "Hei, dette er en test."


class SettingsPage(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.desktop = VirtualDesktop(cls.folder.name, PROGRAM)
        cls.desktop.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        cls.desktop.install_demo_model()
        cls.desktop.set(hasCompletedOnboarding=True, appLanguage="en")
        cls.program = cls.desktop.start(str(PROGRAM), "--page", "settings")
        cls.window = cls.desktop.wait(lambda: cls.desktop.windows("Tulvane"), what="the window")[0]
        cls.page = AccessibleProgram(cls.desktop)
        cls.page.find("heading", "Settings")

    @classmethod
    def tearDownClass(cls):
        cls.desktop.end()
        cls.folder.cleanup()

    def stored(self, key, value):
        self.desktop.wait(lambda: self.desktop.stored(key) == value, what=f"{key} = {value}")

    def switch(self, name, key, value):
        self.page.act("check box", name, "Toggle")
        self.stored(key, value)

    def choose(self, name, key, steps, value):
        """Through the open list, by the keyboard."""
        self.page.focus("combo box", name)
        subprocess.run(["xdotool", "key", "Return"], env=self.desktop.environment, check=True)
        time.sleep(0.3)
        for word in ["Home"] + ["Down"] * steps + ["Return"]:
            subprocess.run(["xdotool", "key", word], env=self.desktop.environment, check=True)
            time.sleep(0.05)
        self.stored(key, value)

    def pixel(self, x, y):
        """Of the window, as RGB."""
        raw = subprocess.run(["import", "-window", self.window, "-crop", f"1x1+{x}+{y}", "-depth", "8", "rgb:-"],
                             env=self.desktop.environment, check=True, capture_output=True).stdout
        return tuple(raw[:3])

    def dictate(self):
        """Into the clipboard; what stands on it afterwards."""
        self.desktop.tulvane("start")
        sound = Path(self.folder.name) / "spoken.wav"
        self.desktop.run("espeak-ng", "-v", "nb", "-w", str(sound), SENTENCE)
        self.desktop.run("paplay", "--device=micsink", str(sound))
        before = self.desktop.status()["historyCount"]
        self.desktop.tulvane("stop")
        self.desktop.wait(lambda: self.desktop.status()["historyCount"] > before, what="the transcript")
        self.desktop.wait(lambda: self.desktop.status()["phase"] in ("notice", "idle"), what="the end")
        return self.desktop.run("xclip", "-selection", "clipboard", "-o")

    def sounds_of(self, work):
        """How many streams the sound server was given while `work` ran."""
        listener = self.desktop.start("pactl", "subscribe", stdout=-1)
        time.sleep(0.5)
        work()
        time.sleep(0.5)
        listener.terminate()
        return sum("'new' on sink-input" in line for line in listener.stdout.read().splitlines())

    def test_the_text_settings_shape_what_arrives(self):
        self.choose("Insert text by", "insertionMethod", 2, "clipboardOnly")
        # What the small demo model makes of the first word is not this test's concern.
        self.assertRegex(self.dictate(), r"^[A-ZÆØÅ].* dette er en test\. $")
        self.switch("Capitalise the first letter", "autoCapitalize", False)
        self.switch("Add a space after the text", "appendTrailingSpace", False)
        self.assertRegex(self.dictate(), r" dette er en test\.$")
        self.switch("Add a space after the text", "appendTrailingSpace", True)
        self.assertEqual(self.dictate()[-1], " ")

    def test_the_clipboard_is_restored_only_where_text_is_pasted(self):
        self.choose("Insert text by", "insertionMethod", 0, "paste")
        self.switch("Restore clipboard", "restoreClipboard", False)
        self.switch("Restore clipboard", "restoreClipboard", True)
        self.choose("Insert text by", "insertionMethod", 2, "clipboardOnly")
        self.page.act("check box", "Restore clipboard", "Toggle")
        time.sleep(0.5)
        self.assertIs(self.desktop.stored("restoreClipboard"), True)
        self.choose("Insert text by", "insertionMethod", 1, "accessibilityThenPaste")

    def test_sounds_can_be_switched_off(self):
        def start_and_cancel():
            self.desktop.tulvane("start")
            self.desktop.tulvane("cancel")
        self.assertGreater(self.sounds_of(start_and_cancel), 0)
        self.switch("Sounds", "playSounds", False)
        self.assertEqual(self.sounds_of(start_and_cancel), 0)
        self.switch("Sounds", "playSounds", True)

    def test_the_language_is_stored(self):
        for steps, raw in enumerate(["no", "nn", "en", "auto"]):
            self.choose("Language", "language", steps, raw)
        self.choose("Language", "language", 0, "no")

    def test_a_recording_stops_by_itself_after_the_chosen_time(self):
        self.desktop.set(maxRecordingSeconds=20)
        self.page.act("spin button", "Stop automatically", "Decrease")
        self.stored("maxRecordingSeconds", 10)
        self.desktop.tulvane("start")
        begun = time.monotonic()
        self.desktop.wait(lambda: self.desktop.status()["phase"] != "recording", limit=15)
        self.assertAlmostEqual(time.monotonic() - begun, 10, delta=1)
        self.page.act("spin button", "Stop automatically", "Increase")
        self.stored("maxRecordingSeconds", 20)

    def test_the_vocabulary_is_stored(self):
        self.page.focus("text", "Vocabulary")
        subprocess.run(["xdotool", "type", "--delay", "30", "Bergen, Q3"], env=self.desktop.environment, check=True)
        self.stored("vocabularyPrompt", "Bergen, Q3")

    def test_the_appearance_changes_at_once(self):
        light = self.pixel(5, 5)
        self.choose("Appearance", "appearance", 2, "dark")
        self.desktop.wait(lambda: sum(self.pixel(5, 5)) < 200, what="a dark window")
        self.choose("Appearance", "appearance", 1, "light")
        self.desktop.wait(lambda: self.pixel(5, 5) == light, what="a light window")

    def indicator(self):
        """Whether the indicator can be seen: a window of its size that no window manager knows."""
        shown = self.desktop.xdotool("search", "--onlyvisible", "--class", "tulvane", "getwindowgeometry", "--shell", "%@")
        return "WIDTH=316\nHEIGHT=104" in shown

    def test_the_indicator_can_be_switched_off_also_while_it_is_there(self):
        self.desktop.tulvane("start")
        self.desktop.wait(self.indicator, what="the indicator")
        self.switch("On-screen indicator", "showHUD", False)
        self.desktop.wait(lambda: not self.indicator(), what="the end of the indicator")
        self.switch("On-screen indicator", "showHUD", True)
        self.desktop.wait(self.indicator, what="the indicator")
        self.desktop.tulvane("cancel")
        self.desktop.wait(lambda: not self.indicator(), what="the end of the indicator")

    def is_in_the_task_bar(self):
        return "SKIP_TASKBAR" not in self.desktop.run("xprop", "-id", self.window, "_NET_WM_STATE")

    def test_the_task_bars_entry_goes_and_comes_and_the_window_stays(self):
        self.assertTrue(self.is_in_the_task_bar())
        self.switch("Show in task bar", "showInDock", False)
        self.desktop.wait(lambda: not self.is_in_the_task_bar(), what="the end of the entry")
        self.assertEqual(self.desktop.windows("Tulvane"), [self.window])
        # There is no tray here, and none is promised.
        self.page.shows("This desktop shows no icon for Tulvane. Start it again to reach this window; you can quit below.")
        self.switch("Show in task bar", "showInDock", True)
        self.desktop.wait(self.is_in_the_task_bar, what="the entry")

    def test_the_setup_guide_opens_in_a_window_of_its_own(self):
        self.page.click("push button", "Setup guide")
        self.desktop.wait(lambda: self.desktop.windows("Set up Tulvane"), what="the guide")
        self.page.shows("All set. Focus any text field and press Alt+Space.")
        self.page.click("push button", "Done")
        self.desktop.wait(lambda: not self.desktop.windows("Set up Tulvane"), what="the end of the guide")
        self.assertEqual(self.desktop.windows("Tulvane"), [self.window])

    def test_launch_at_login_writes_an_autostart_entry(self):
        entry = Path(self.folder.name) / "config/autostart/com.dunio.Tulvane.desktop"
        self.page.act("check box", "Launch at login", "Toggle")
        self.desktop.wait(entry.exists, what="the entry")
        self.assertIn(f'Exec="{PROGRAM}" --background', entry.read_text())
        self.page.act("check box", "Launch at login", "Toggle")
        self.desktop.wait(lambda: not entry.exists(), what="the end of the entry")


if __name__ == "__main__":
    unittest.main()
