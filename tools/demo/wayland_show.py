"""The same on a Wayland desktop without a screen. The program's windows are worked as a screen reader works them: no
mouse of ours is there."""
import os
import shutil
import time
from pathlib import Path

from accessible_program import AccessibleProgram
from dictation import Dictation
from wayland_editor import WaylandEditor
from looks import FONTS, write
from show import Show
from sound_server import needed_programs
from wayland_desktop import desktop_of
from wayland_keys import ALT, SPACE, WaylandKeys

NEEDED = ["dbus-daemon", "espeak-ng", "sox", "setpriv", "l3afpad"]


class WaylandShow(Show):
    def __init__(self, folder, program, pictures, kind):
        """`kind`: "sway", "kwin" or "gnome"."""
        self.kind = desktop_of(kind)
        os.chmod(folder, 0o711)  # the user of the desktop is another one than root
        super().__init__(Path(folder) / "home", program, pictures)

    def check(self, missing):
        absent = [name for name in [*NEEDED, *needed_programs()] if not shutil.which(name)]
        Show.check([*absent, *self.kind.missing()])

    def start_desktop(self, folder, program):
        folder.mkdir()
        write(folder / "config/gtk-3.0/settings.ini", "[Settings]\ngtk-font-name=Inter 11\n")
        write(folder / "config/fontconfig/fonts.conf", FONTS)
        self.desktop = self.kind(folder, program, x11=self.kind.NAME == "GNOME", sound=True)

    def picture(self, name, frame=None):
        self.count += 1
        file = self.pictures / f"{self.count:02}-{name}.png"
        if frame:
            shutil.copy(frame, file)
        else:
            time.sleep(0.6)  # whatever moves has come to rest
            self.desktop.picture(file)

    def picture_of_the_end(self):
        self.picture("where-it-stopped")

    def set_up(self):
        desktop = self.desktop
        desktop.set(appLanguage="en")
        self.have_hotkey()
        desktop.start_logged("tulvane", str(desktop.program))
        self.page = AccessibleProgram(desktop)
        self.page.find("push button", "Close")
        self.tell("First start: the setup guide opens, with the speech model still to be had.")
        self.picture("setup-guide")
        desktop.install_demo_model()
        desktop.own()
        self.page.find("push button", "Done")
        desktop.wait(lambda: "4/4 completed" in self.page.texts(), what="the last mark")
        self.choose_mode()
        self.picture("setup-complete")
        self.choose("push button", "Done")
        desktop.wait(lambda: desktop.stored("hasCompletedOnboarding") is True, what="the end of the setup")
        self.tell("The demo model is put where a download would have put it, and the guide is gone through.")

    def have_hotkey(self):
        """The standard one works here."""

    def choose_mode(self):
        self.page.act("radio button", "Hold to talk", "Press")
        self.desktop.wait(lambda: self.desktop.stored("hotkeyMode") == "hold", what="the mode")

    def choose(self, role, name):
        """By the keyboard."""
        self.page.focus(role, name)
        time.sleep(0.2)
        self.desktop.key("return")

    def open_editor(self):
        self.editor = WaylandEditor(self.desktop, self.desktop.folder / "Notes.txt")
        self.dictation = Dictation(self.desktop, self.editor.text, WaylandKeys(self.desktop))

    def hold(self, sound):
        return self.with_hotkey(sound, lambda: None)

    def with_hotkey(self, sound, meanwhile):
        keys = self.dictation.keyboard
        try:
            return self.dictation.dictate(sound, lambda: keys.press(ALT, SPACE), lambda: keys.release(ALT, SPACE),
                                          meanwhile=meanwhile)
        finally:
            keys.release(ALT, SPACE)

    def photograph(self, sound):
        listening = self.desktop.folder / "listening.png"
        arrival = self.with_hotkey(sound, lambda: self.desktop.picture(listening))
        self.picture("indicator-listening", listening)
        return arrival

    def show_pages(self):
        if self.kind.NAME == "sway":
            self.desktop.run("swaymsg", "layout", "tabbed")  # a window in front is seen whole
        self.desktop.start(str(self.desktop.program))  # a second start brings the window
        self.page.find("heading", "Recent dictations")
        self.picture("home-page-with-figures")
        for name in ("Statistics", "History"):
            self.choose("page tab", name)
            self.page.find("heading", name)
            self.picture(name.lower())


class GnomeShow(WaylandShow):
    """GNOME keeps the standard hotkey for itself, and tells programs of presses alone."""

    HOTKEY_IS, UNTIL_TEXT = "pressed before and after each sentence", "pressing the hotkey again"

    def have_hotkey(self):
        self.desktop.set(hotkeyMode="toggle")
        self.desktop.start_settings_daemon()
        self.desktop.choose_hotkey()

    def choose_mode(self):
        pass

    def with_hotkey(self, sound, meanwhile):
        def press():
            self.desktop.press(*self.desktop.HOTKEY)
        return self.dictation.dictate(sound, press, press, meanwhile=meanwhile)


def show_on(folder, program, pictures, kind):
    """`kind`: "sway", "kwin" or "gnome"."""
    return (GnomeShow if kind == "gnome" else WaylandShow)(folder, program, pictures, kind)
