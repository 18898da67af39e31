"""What dictations on GNOME have besides: the user's own key binding, and the clipboard as X11 programs reach it."""
import subprocess

from wayland_dictation import WaylandDictation
from wayland_kinds import GnomeDesktop


class GnomeDictation(WaylandDictation):
    KIND = "gnome"
    HOTKEY = GnomeDesktop.HOTKEY
    MODE = "toggle"

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
        self.desktop.press(*self.HOTKEY)

    def hold(self):
        """The key is pressed before and after: the desktop tells presses alone."""
        self.speak(self.sound)

    def speak(self, sound):
        self.press_hotkey()
        self.desktop.wait_for_phase("recording")
        self.desktop.run("paplay", "--device=micsink", str(sound))
        # What comes sooner after the first is taken for the keyboard's repetition.
        self.desktop.wait_for_phase("recording")
        self.press_hotkey()
        self.desktop.wait(lambda: self.phase() != "recording", what="the end of the recording")
