"""Sentences spoken into the microphone of a virtual desktop, and the text that arrives in the program in front."""
import time
from dataclasses import dataclass

from keyboard import ALT, SPACE, Keyboard
from phases import Lost, Phases
from virtual_desktop import VirtualDesktop


@dataclass
class Arrival:
    text: str
    seconds: float  # from the end of the dictation to the text in the field


class Dictation:
    """`read` says what stands in the field in front. `keyboard`: the user's, X11's own where none is given."""

    def __init__(self, desktop, read, keyboard=None):
        self.desktop, self.read = desktop, read
        self.keyboard, self.phases = keyboard or Keyboard(desktop.display), Phases(desktop)
        self.spoken = 0

    def sound(self, text, voice="nb"):
        """The sentence in a file. Whoever speaks lets go of the key a moment after the last word: the silence at the
        end covers what is still on its way from the player to the microphone when the player ends."""
        self.spoken += 1
        raw = self.desktop.folder / f"spoken-{self.spoken}-raw.wav"
        file = self.desktop.folder / f"spoken-{self.spoken}.wav"
        self.desktop.run("espeak-ng", "-v", voice, "-w", str(raw), text)
        self.desktop.run("sox", str(raw), str(file), "pad", "0.1", "0.4")
        return file

    def play(self, sound):
        return self.desktop.start("paplay", "--device=micsink", str(sound))

    def dictate(self, sound, begin, end, meanwhile=lambda: None):
        """One whole dictation between `begin` and `end`; raises Lost where no text comes of it. `meanwhile` is called
        in the middle of the sentence."""
        before, begun = self.read(), time.monotonic()
        begin()
        self.phases.wait("recording", begun)
        player = self.play(sound)
        self._wait_for_half(sound)
        meanwhile()
        if player.wait(60) != 0:
            raise Lost("the microphone could not be spoken into")
        ended = time.monotonic()
        end()
        arrived = self._wait_for_text(before, ended)
        self.phases.wait("idle", ended)
        return Arrival(self.read()[len(before):], arrived - ended)

    @staticmethod
    def _wait_for_half(sound):
        # 16 bits and one channel, at espeak-ng's own rate.
        time.sleep(sound.stat().st_size / (2 * 22050) / 2)

    def _wait_for_text(self, before, ended):
        def arrived():
            # Something else than a text, such as "Nothing heard", is the end of the wait as well.
            return self.read() != before or self.phases.current in ("notice", "error")
        try:
            VirtualDesktop.wait(arrived, limit=60, what="the text", pause=0.003)
        except TimeoutError as late:
            raise Lost(str(late)) from late
        moment = time.monotonic()
        if self.read() == before:
            self.phases.wait("idle", ended)
        return moment

    def hold_hotkey(self, sound, **options):
        try:
            return self.dictate(sound, lambda: self.keyboard.press(ALT, SPACE),
                                lambda: self.keyboard.release(ALT, SPACE), **options)
        finally:  # nothing is held any longer, however it went
            self.keyboard.release(ALT, SPACE)
