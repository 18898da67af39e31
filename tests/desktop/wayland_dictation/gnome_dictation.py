"""What dictations on GNOME have besides: the user's own key binding, and the clipboard as X11 programs reach it."""
import subprocess
import time

from wayland_dictation import WaylandDictation
from wayland_kinds import GnomeDesktop


class GnomeDictation(WaylandDictation):
    KIND = "gnome"
    HOTKEY = GnomeDesktop.HOTKEY
    MODE = "toggle"
    # Seconds. What comes sooner after a press is taken for the keyboard's repetition, and the desktop takes its time to run
    # what a press is bound to.
    BETWEEN_PRESSES = 1.5
    pressed_at = 0.0

    @classmethod
    def prepare(cls):
        cls.desktop.start_settings_daemon()
        cls.desktop.set(hotkeyMode=cls.MODE)
        cls.desktop.choose_hotkey()

    def paste(self, *how):
        return subprocess.run([*self.desktop.as_user, "timeout", "5", "xclip", "-selection", "clipboard", "-o",
                               *(how or ("-t", "UTF8_STRING"))], env=self.desktop.environment, capture_output=True).stdout

    def copy(self, data, kind):
        target = "UTF8_STRING" if kind.startswith("text/plain") else kind
        copier = self.desktop.start("xclip", "-selection", "clipboard", "-i", "-t", target, "-quiet", stdin=subprocess.PIPE)
        copier.stdin.buffer.write(data)
        copier.stdin.close()
        self.desktop.wait(lambda: self.paste("-t", target) == data, what="what was copied")

    def press_hotkey(self):
        time.sleep(max(0.0, GnomeDictation.pressed_at + self.BETWEEN_PRESSES - time.monotonic()))
        self.desktop.press(*self.HOTKEY)
        GnomeDictation.pressed_at = time.monotonic()

    def speak(self, sound):
        """The key is pressed before and after: the desktop tells presses alone."""
        self.press_hotkey()
        self.desktop.wait_for_phase("recording")
        self.desktop.run("paplay", "--device=micsink", str(sound))
        self.press_hotkey()
        self.desktop.wait(lambda: self.phase() != "recording", what="the end of the recording")
