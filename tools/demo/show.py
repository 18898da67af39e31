"""The whole product, unattended, on a virtual desktop: from a new user's first start to the figures of the home page."""
import shutil
import sys
from pathlib import Path

from accessible_program import AccessibleProgram
from dictation import Dictation
from docked_icon import DockedIcon
from looks import decent_desktop
from phases import Lost
from screen import LastOfPhase, Screen
from sentences import SENTENCES, complaints
from setup_guide import SetupGuide
from sound_server import needed_programs
from text_editor import TextEditor

LANGUAGES = {"no": "Norwegian Bokmål", "nn": "Norwegian Nynorsk", "en": "English"}
INDICATOR = (540, 670, 200, 70)  # where it stands on this screen
NEEDED = ["Xvfb", "dbus-daemon", "openbox", "picom", "trayer", "hsetroot", "espeak-ng", "sox",
          "xdotool", "convert", "l3afpad", "setpriv"]


class Show:
    HOTKEY_IS, UNTIL_TEXT = "held while each sentence is spoken", "letting the hotkey go"

    def __init__(self, folder, program, pictures):
        """`folder`: the new user's home. `pictures`: where these go; what earlier runs left there is removed."""
        self.check([name for name in [*NEEDED, *needed_programs()] if not shutil.which(name)])
        self.pictures, self.count = Path(pictures), 0
        self.pictures.mkdir(parents=True, exist_ok=True)
        for old in self.pictures.glob("[0-9][0-9]-*.png"):
            old.unlink()
        self.start_desktop(Path(folder), program)

    @staticmethod
    def check(missing):
        if missing:
            sys.exit(f"The unattended show needs programs that are not here: {', '.join(missing)}. "
                     "On Debian tools/install-dependencies installs them.")

    def start_desktop(self, folder, program):
        self.desktop = decent_desktop(folder, program)
        self.screen = Screen(self.desktop)

    def end(self):
        self.desktop.end()

    def picture(self, name, frame=None):
        self.count += 1
        self.screen.save(frame or self.screen.settled(), self.pictures / f"{self.count:02}-{name}.png")

    def run(self):
        """What is wrong with what arrived, in words; nothing where all is well."""
        try:
            self.set_up()
            self.open_editor()
            wrong = complaints(self.dictate_all(), self.editor.save())
            self.show_pages()
            return wrong
        except Exception:
            self.picture_of_the_end()
            raise

    def picture_of_the_end(self):
        self.picture("where-it-stopped", self.screen.frame())

    def set_up(self):
        desktop = self.desktop
        desktop.set(appLanguage="en")  # so that the pictures can be read by everybody; it starts in Norwegian
        desktop.start(str(desktop.program))
        self.page = AccessibleProgram(desktop)
        guide = SetupGuide(desktop, self.page)
        self.tell("First start: the setup guide opens, with the speech model still to be had.")
        self.picture("setup-guide")
        desktop.install_demo_model()
        guide.wait_until_complete()
        guide.choose_holding()
        self.picture("setup-complete")
        guide.finish()
        self.tell("The demo model is put where a download would have put it, and the guide is gone through.")
        self.icon = DockedIcon(desktop)
        self.open_home("tray-menu", "home-page-of-a-new-user")
        self.close_window()

    def open_home(self, menu_picture, page_picture):
        """Through the menu of the icon in the tray, where "Open Tulvane" is the fifth line from below."""
        self.icon.open_menu()
        self.picture(menu_picture)
        self.icon.choose("Up", "Up", "Up", "Up", "Up")
        self.desktop.wait(lambda: self.desktop.windows("Tulvane"), what="the window")
        self.page.find("heading", "Recent dictations")
        self.picture(page_picture)

    def close_window(self):
        self.desktop.run("xdotool", "key", "alt+F4")
        self.desktop.wait(lambda: not self.desktop.windows("Tulvane"), what="the window’s end")

    def open_editor(self):
        self.desktop.run("xdotool", "mousemove", "1190", "700")
        self.editor = TextEditor(self.desktop, self.desktop.folder / "Notes.txt")
        self.dictation = Dictation(self.desktop, self.editor.text)

    def dictate_all(self):
        """The text of each sentence as it stands in the editor, None for one that was lost."""
        self.tell(f"A text editor is in front. The hotkey is {self.HOTKEY_IS}:\n")
        arrived = []
        for number, sentence in enumerate(SENTENCES):
            if number:
                self.editor.new_line()
            arrived.append(self.dictate(*sentence, way=self.photograph if number == 1 else self.hold))
        self.picture("text-in-the-editor")
        return arrived

    def dictate(self, language, voice, said, way):
        self.desktop.set(language=language)
        self.tell(f"  {LANGUAGES[language]}\n    said     {said}")
        try:
            arrival = way(self.dictation.sound(said, voice))
        except Lost as why:
            self.tell(f"    arrived  nothing: {why}\n")
            return None
        self.tell(f"    arrived  {arrival.text.strip()}\n"
                  f"    {arrival.seconds:.2f} s from {self.UNTIL_TEXT} to the text in the editor\n")
        return arrival.text

    def hold(self, sound):
        return self.dictation.hold_hotkey(sound)

    def photograph(self, sound):
        """A dictation with a picture of each thing that the indicator shows: the meter at its highest, then the work."""
        listening = []
        with LastOfPhase(self.screen, self.dictation.phases) as last:
            arrival = self.dictation.hold_hotkey(
                sound, meanwhile=lambda: listening.append(self.screen.brightest(INDICATOR, 0.8)))
        self.picture("indicator-listening", listening[0])
        if "transcribing" in last.frames:  # not on a machine that has the text before a picture can be taken
            self.picture("indicator-transcribing", last.frames["transcribing"])
        return arrival

    def show_pages(self):
        self.open_home("tray-menu-with-the-last-dictation", "home-page-with-figures")
        for name in ("Statistics", "History"):
            self.page.click("page tab", name)
            self.page.find("heading", name)
            self.picture(name.lower())

    @staticmethod
    def tell(text):
        print(text, flush=True)
