"""Whole dictations of the running program on a desktop of its own, and the moments of each of their steps."""
import re
import time
import wave

from measuring import ALT, ROOT, SPACE, Keyboard, Lines, Phases

# What is spoken, by about how many seconds it takes.
SPEECH = {1: "Hei på deg.", 3: "God morgen, jeg heter Kari og bor i Bergen.",
          8: "God morgen, jeg heter Kari og bor i Bergen. Kan du sende meg rapporten i morgen? "
             "Dette er en test. Vi ses på mandag.",
          20: "God morgen, jeg heter Kari og bor i Bergen. Kan du sende meg rapporten i morgen? Dette er en test. "
              "Vi ses på mandag. Jeg kommer litt senere i dag. Møtet begynner klokka ti. Kan du ringe meg etterpå? "
              "Takk for hjelpen. Det er fint vær i dag. Vi snakkes i morgen tidlig."}


class Bench:
    """The running program with a field in front of it, and everything that tells how far a dictation is."""

    def __init__(self, desktop, program):
        self.desktop = desktop
        self.program = desktop.start(str(program), "--background", stderr=-1)
        self.log = Lines(self.program.stderr)
        self.log.until("Loaded")
        self.log.until("Transcribed")  # the warm-up
        entry = desktop.start("/usr/bin/python3", str(ROOT / "tools/desktop_kit/entry.py"), stdout=-1)
        self.field = Lines(entry.stdout)
        self.field.until("null")
        self.phases = Phases(desktop)
        self.keyboard = Keyboard(desktop.display)

    def record(self, name, text, seconds=0):
        """Speaks into a sound file; its path, and how long to wait after it so that `seconds` have passed."""
        sound = self.desktop.folder / f"{name}.wav"
        self.desktop.run("espeak-ng", "-v", "nb", "-w", str(sound), text)
        with wave.open(str(sound)) as file:
            length = file.getnframes() / file.getframerate()
        return sound, max(0.0, seconds - length)

    def dictate(self, sound, pause=0.0):
        """The moments at which the key was released, and each step was done."""
        self.keyboard.press(ALT, SPACE)
        self.log.until("Recording started")
        self.desktop.run("paplay", "--device=micsink", str(sound))
        time.sleep(pause)
        self.field.forget()
        released = time.monotonic()
        self.keyboard.release(ALT, SPACE)
        stopped, words = self.log.find("Recording stopped")
        transcribed = self.log.until("Transcribed", 60)
        cleaned = self.phases.wait("inserting", released)
        shown = self.field.until('"')
        self.phases.wait("idle", cleaned)
        return released, stopped, transcribed, cleaned, shown, float(re.search(r"([\d.]+)s$", words)[1])
