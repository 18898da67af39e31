"""The program on desktops that lack something: no tray and no compositor at all, and in turn no sound, no home, no language, no
time zone, no session bus, no runtime folder. It starts, it dictates where that is possible, and it says what is missing."""
import os
import signal
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

from keyboard import ALT, SPACE, Keyboard
from terminal_field import TerminalField
from virtual_desktop import VirtualDesktop

PROGRAM = Path(os.environ["TULVANE_PROGRAM"])
SENTENCE = "Hei, dette er en test."
NOWHERE = "/proc/nowhere"  # not even the superuser can make it


class BareSession(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)
        cls.desktop = desktop = VirtualDesktop(cls.folder.name, PROGRAM)
        cls.addClassCleanup(desktop.end)
        desktop.install_demo_model()
        desktop.set(hasCompletedOnboarding=True, appLanguage="en", language="no", hotkeyMode="hold")
        cls.field, cls.keyboard = TerminalField(desktop), Keyboard(desktop.display)
        cls.sound, cls.log = desktop.folder / "said.wav", desktop.folder / "log"
        desktop.run("espeak-ng", "-v", "nb", "-w", str(desktop.folder / "raw.wav"), SENTENCE)
        desktop.run("sox", str(desktop.folder / "raw.wav"), str(cls.sound), "pad", "0.1", "0.4")

    def start(self, *without, **others):
        """The program without some variables, and with others, once it has told its version."""
        plain = self.desktop.environment
        self.desktop.environment = {name: value for name, value in plain.items() if name not in without} | others
        try:
            with open(self.log, "w", encoding="utf-8") as log:
                self.program = self.desktop.start(str(PROGRAM), "--background", stderr=log)
        finally:
            self.desktop.environment = plain
        self.addCleanup(self.end)
        self.logs("Tulvane ")

    def end(self):
        """Ends the way it is asked to: not by a crash."""
        self.assertIsNone(self.program.poll(), self.logged())
        self.program.send_signal(signal.SIGTERM)
        self.assertEqual(self.program.wait(10), 0, self.logged())

    def logged(self):
        return self.log.read_text(encoding="utf-8")

    def logs(self, line):
        try:
            self.desktop.wait(lambda: line in self.logged() or self.program.poll() is not None, what=line)
        except TimeoutError as late:
            raise AssertionError(self.logged()) from late
        self.assertIn(line, self.logged())

    def dictate(self):
        self.field.bring_to_front()
        before = self.field.text()
        time.sleep(0.3)  # the program takes the hotkey right after it has logged its version
        self.keyboard.press(ALT, SPACE)
        try:
            self.logs("Recording started")
            self.desktop.run("paplay", "--device=micsink", str(self.sound))
        finally:
            self.keyboard.release(ALT, SPACE)
        self.desktop.wait(lambda: self.field.text() != before, limit=30, what="the text; " + self.logged())
        self.desktop.wait(lambda: self.field.text() == before + SENTENCE + " ", what="the whole text")

    def ask(self, *words):
        return subprocess.run([PROGRAM, *words], env=self.desktop.environment, capture_output=True, text=True, timeout=30)

    def test_no_language(self):
        self.start("LC_ALL", "LANG", "LC_CTYPE", "LANGUAGE", LANG="C")
        self.dictate()

    def test_a_language_and_a_time_zone_that_do_not_exist(self):
        self.start("LANG", LC_ALL="xx_YY.nonsense", TZ="Nowhere/Land")
        self.dictate()

    def test_no_session_bus(self):
        self.start(DBUS_SESSION_BUS_ADDRESS="unix:path=/nonexistent", DBUS_SYSTEM_BUS_ADDRESS="unix:path=/nonexistent")
        self.logs("No session bus: the program cannot be controlled from outside")
        self.dictate()

    def test_no_runtime_folder(self):
        self.start("XDG_RUNTIME_DIR")
        self.dictate()

    def test_no_sound_server(self):
        self.start(PULSE_SERVER="unix:/nonexistent")
        self.desktop.wait(lambda: self.ask("status").returncode == 0, what="the program")
        failed = self.ask("start")
        self.assertEqual((failed.returncode, failed.stderr), (1, "tulvane: No microphone is available.\n"))

    def test_no_home(self):
        self.start("XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", HOME=NOWHERE)
        self.desktop.wait(lambda: self.ask("status").returncode == 0, what="the program")
        self.logs(f"to {NOWHERE}/.config/com.dunio.Tulvane.json: ")
        failed = self.ask("settings", "set", "playSounds", "false")
        self.assertEqual(failed.returncode, 1)
        self.assertIn(f"could not be saved to {NOWHERE}", failed.stderr)


if __name__ == "__main__":
    unittest.main()
