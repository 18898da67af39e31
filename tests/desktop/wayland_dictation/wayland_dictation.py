"""The real program on a Wayland desktop without a screen: real keys, real sound, and programs of every toolkit."""
import os
import shutil
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

from field_program import FieldProgram as Field
from sentences import SENTENCES
from wayland_desktop import desktop_of

PROGRAM = Path(os.environ["TULVANE_PROGRAM"])
TARGETS = Path(__file__).resolve().parent.parent.parent / "support/targets"
SENTENCE = "Hei, dette er en test."
SOAK = os.environ.get("TULVANE_SOAK", "0") != "0"
ALT, SPACE, CONTROL, SHIFT = 56, 57, 29, 42


class Terminal:
    """foot, with a program in it that keeps what it gets."""

    def __init__(self, desktop):
        self.file = desktop.folder / f"terminal-{time.monotonic_ns()}"
        self.process = desktop.start("foot", "/usr/bin/python3", str(TARGETS / "terminal_reader.py"), str(self.file))
        desktop.wait(self.file.exists, what="the terminal")
        time.sleep(0.3)

    def text(self):
        return self.file.read_text()

    @staticmethod
    def has_focus():
        return True

    end = Field.end


class GtkTerminal(Terminal):
    """The same in a terminal of GTK's, where foot opens no window: on KWin without a screen."""

    def __init__(self, desktop):
        self.file = desktop.folder / f"terminal-{time.monotonic_ns()}"
        self.process = desktop.start("/usr/bin/python3", str(TARGETS / "gtk_target.py"), "terminal", "/usr/bin/python3",
                                     str(TARGETS / "terminal_reader.py"), str(self.file), stdin=subprocess.PIPE)
        desktop.wait(self.file.exists, what="the terminal")
        time.sleep(0.5)


class WaylandDictation(unittest.TestCase):
    KIND = ""
    TERMINAL = Terminal
    HOTKEY = (ALT, SPACE)

    @classmethod
    def setUpClass(cls):
        kind = desktop_of(cls.KIND)
        needs = {"wl-paste": "wl-clipboard", "espeak-ng": "espeak-ng", "sox": "sox", "paplay": "pulseaudio-utils",
                 "foot": "foot"}
        missing = [*kind.missing(), *(package for program, package in needs.items() if not shutil.which(program))]
        if missing:
            raise unittest.SkipTest(f"not installed: {' '.join(missing)}")
        cls.folder = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        cls.addClassCleanup(cls.folder.cleanup)
        os.chmod(cls.folder.name, 0o711)
        cls.desktop = kind(cls.folder.name, PROGRAM, sound=True, x11=True)
        cls.addClassCleanup(cls.desktop.end)
        cls.desktop.install_demo_model()
        cls.desktop.own()
        cls.desktop.set(hasCompletedOnboarding=True, appLanguage="en", language="no", hotkeyMode="hold")
        cls.prepare()
        cls.log = cls.desktop.folder / "tulvane.log"
        cls.desktop.start_logged("tulvane", str(PROGRAM), "--background")
        cls.desktop.wait(lambda: cls.desktop.ask(str(PROGRAM), "status"), what="the program")
        cls.sound = cls.sound_of(SENTENCE, "nb")

    @classmethod
    def sound_of(cls, said, voice):
        raw, sound = cls.desktop.folder / "raw.wav", cls.desktop.folder / f"{hash(said)}.wav"
        cls.desktop.run("espeak-ng", "-v", voice, "-w", str(raw), said)
        cls.desktop.run("sox", str(raw), str(sound), "pad", "0.1", "0.4")
        return sound

    @classmethod
    def prepare(cls):
        """What the kind needs before the program starts."""

    def phase(self):
        return self.desktop.status()["phase"]

    def hold(self):
        self.speak(self.sound)

    def speak(self, sound):
        """With the hotkey held."""
        self.desktop.down(*self.HOTKEY)
        try:
            self.desktop.wait_for_phase("recording")
            self.desktop.run("paplay", "--device=micsink", str(sound))
        finally:
            self.desktop.up(*reversed(self.HOTKEY))

    def paste(self, *how):
        return subprocess.run([*self.desktop.as_user, "wl-paste", "-n", *how], env=self.desktop.environment,
                              capture_output=True, timeout=10).stdout

    def copy(self, data, kind):
        copier = self.desktop.start("wl-copy", "--type", kind, stdin=subprocess.PIPE)
        copier.stdin.buffer.write(data)
        copier.stdin.close()
        self.desktop.wait(lambda: self.paste("-t", kind) == data, what="what was copied")

    def copy_until_taken(self, data, kind):
        """By a program that ends as soon as another one has the clipboard."""
        copier = self.desktop.start("wl-copy", "--foreground", "--type", kind, stdin=subprocess.PIPE)
        self.addCleanup(copier.wait)
        self.addCleanup(copier.terminate)
        copier.stdin.buffer.write(data)
        copier.stdin.close()
        self.desktop.wait(lambda: self.paste("-t", kind) == data, what="what was copied")
        return copier

    def dictate_into(self, field):
        self.addCleanup(field.end)
        self.copy("før «æøå»".encode(), "text/plain;charset=utf-8")
        self.hold()
        self.desktop.wait(lambda: field.text() or self.phase() in ("notice", "error"), limit=60, what="the text")
        self.desktop.wait_for_phase("idle", "notice", "error")
        self.assertEqual(field.text(), SENTENCE + " ", self.said())
        self.assertTrue(field.has_focus())
        if SOAK:
            self.dictate_show_into(field)
        self.desktop.wait(lambda: self.paste() == "før «æøå»".encode(), what="the clipboard of before")

    def dictate_show_into(self, field):
        """Its sentences, in their languages, behind what stands there."""
        self.addCleanup(self.desktop.set, language="no")
        for language, voice, said in SENTENCES:
            self.desktop.set(language=language)
            before = field.text()
            self.speak(self.sound_of(said, voice))
            self.desktop.wait(lambda: field.text() != before or self.phase() in ("notice", "error"), limit=60, what=said)
            self.desktop.wait_for_phase("idle")
            self.assertEqual(field.text(), before + said + " ", self.said())

    def said(self):
        return self.log.read_text()[-3000:]

    def test_doctor_finds_nothing_to_do(self):
        found = self.desktop.ask(str(PROGRAM), "doctor")
        self.assertTrue(found.endswith("Ready to dictate.\n"), found)

    def test_into_gtk3(self):
        self.dictate_into(Field(self.desktop, "/usr/bin/python3", str(TARGETS / "gtk_target.py"), "view"))

    def test_into_gtk4(self):
        self.dictate_into(Field(self.desktop, "/usr/bin/python3", str(TARGETS / "gtk4_target.py")))

    def test_into_qt6(self):
        self.dictate_into(Field(self.desktop, str(PROGRAM.parent / "tulvane_qt_target"), "text",
                                QT_QPA_PLATFORM="wayland"))

    def test_into_a_terminal(self):
        self.dictate_into(self.TERMINAL(self.desktop))

    def test_into_a_program_of_x11(self):
        self.dictate_into(Field(self.desktop, "/usr/bin/python3", str(TARGETS / "gtk_target.py"), "view", GDK_BACKEND="x11"))

    def test_a_picture_on_the_clipboard_is_there_again(self):
        picture = os.urandom(3_000_001)
        field = Field(self.desktop, "/usr/bin/python3", str(TARGETS / "gtk_target.py"), "view")
        self.addCleanup(field.end)
        self.copy(picture, "image/png")
        self.hold()
        self.desktop.wait(lambda: field.text(), limit=60, what="the text")
        self.desktop.wait_for_phase("idle")
        self.desktop.wait(lambda: self.paste("-t", "image/png") == picture, what="the picture")

    def test_where_no_program_is_in_front_the_text_waits_on_the_clipboard(self):
        self.hold()
        self.desktop.wait_for_phase("notice", "idle")
        self.desktop.wait(lambda: self.paste().decode().strip() == SENTENCE, what="the text on the clipboard")

    def test_the_indicator_is_seen_and_takes_no_focus(self):
        field = Field(self.desktop, "/usr/bin/python3", str(TARGETS / "gtk_target.py"), "view")
        self.addCleanup(field.end)
        time.sleep(0.5)
        self.desktop.down(*self.HOTKEY)
        try:
            self.desktop.wait_for_phase("recording")
            time.sleep(0.6)
            self.assertTrue(field.has_focus())
            file = Path(os.environ.get("TULVANE_PICTURES", self.folder.name)) / f"{self.KIND}-indicator.png"
            self.desktop.picture(file)
            self.assertGreater(self.dark_share(file), 0.3)
        finally:
            self.desktop.up(*reversed(self.HOTKEY))
        self.desktop.wait_for_phase("idle", "notice", "error")

    def dark_share(self, file):
        """How much of the indicator's place is as dark as it is; the field around it is white."""
        values = subprocess.run(["convert", str(file), "-crop", "160x40+560+604", "-colorspace", "Gray", "-threshold", "40%",
                                 "-format", "%[fx:1-mean]", "info:"], capture_output=True, text=True, check=True).stdout
        return float(values)


