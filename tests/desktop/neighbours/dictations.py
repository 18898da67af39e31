"""Dictations among neighbours that fail: where each recognised text got to, and what the program said."""
import json
import os
import random
import subprocess
import sys
import tempfile
import time
import unittest
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from keyboard import ALT, SPACE, Keyboard
from model_hub import ModelHub
from neighbours import (AccessibilityBus, ClipboardOwner, Compositor, SessionBus, SoundServer, Tray, TransferHelper,
                        WindowManager)
from phases import Phases
from terminal_field import TerminalField
from virtual_desktop import VirtualDesktop

PROGRAM = Path(os.environ["TULVANE_PROGRAM"])
RECORDER = os.environ["TULVANE_SEGMENT_RECORDER"]
SENTENCE = "Vi kommer."
LIMIT = 60  # seconds; nothing that has ended well is that slow
# The smallest model of the catalogue, and where the hub has it: at this rate, an hour and more.
MODEL, SIZE = "nb-whisper-small-q5_0", 175_000_000
PATH = "NbAiLab/nb-whisper-small/resolve/main/ggml-model-q5_0.bin"
SLOWLY = {"rate": 20_000}
AT_REST = ("idle", "notice", "error")


class Fault:
    """Something that lasts for so many seconds, beside what the test does."""
    # One thread for all: what is started for a test ends with the thread that started it.
    worker = ThreadPoolExecutor(1)

    def __init__(self, begin, end, seconds):
        self.begin, self.end, self.seconds, self.ended = begin, end, seconds, None

    def strike(self):
        self.begin()
        self.ended = self.worker.submit(self._last)

    def _last(self):
        time.sleep(self.seconds)
        self.end()

    def over(self, has_arrived):
        """Waits for its end, and raises what went wrong there; whether the text arrived before."""
        arrived = False
        while not arrived and not self.ended.done():
            arrived = has_arrived()
            time.sleep(0.02)
        self.ended.result(self.seconds + LIMIT)
        return arrived


class DictationsAmongNeighbours(unittest.TestCase):
    """The desktop, its neighbours, and the program. `seed`: of the points at which something happens."""
    seed = int(os.environ.get("TULVANE_SEED", "11"))
    pause = 300  # ms that the engine takes longer, so that there is a time in which it is at work

    @classmethod
    def setUpClass(cls):
        cls.random, cls.places, cls.preloaded = random.Random(cls.seed), {}, [RECORDER]
        print(f"seed {cls.seed}", file=sys.stderr)
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)
        cls.desktop = desktop = VirtualDesktop(cls.folder.name, PROGRAM)
        cls.addClassCleanup(desktop.end)
        SessionBus.give_address_for_life(desktop)
        cls.hub = ModelHub(Path(cls.folder.name) / "hub")
        cls.addClassCleanup(cls.hub.end)
        cls.hub.put_sparse(PATH, SIZE)
        cls.hub.script(PATH, *[SLOWLY] * 1000)
        desktop.environment["TULVANE_HUB_URL"] = cls.hub.address
        desktop.install_demo_model()
        desktop.set(hasCompletedOnboarding=True, appLanguage="en", language="no", hotkeyMode="hold", playSounds=True)
        cls.neighbours = {one.name: one for one in (
            SoundServer(desktop), SessionBus(desktop), ClipboardOwner(desktop), AccessibilityBus(desktop), Tray(desktop),
            WindowManager(desktop), Compositor(desktop), TransferHelper(desktop, cls.hub, MODEL))}
        cls.neighbours["accessibility bus"].begin()
        cls.prepare()
        cls.start_program()
        cls.field, cls.keyboard, cls.phases = TerminalField(desktop), Keyboard(desktop.display), Phases(desktop)
        cls.sound, cls.silence = desktop.folder / "said.wav", desktop.folder / "silence.wav"
        desktop.run("espeak-ng", "-v", "nb", "-w", str(desktop.folder / "raw.wav"), SENTENCE)
        desktop.run("sox", str(desktop.folder / "raw.wav"), str(cls.sound), "pad", "0.1", "0.4")
        desktop.run("sox", "-n", "-r", "22050", "-c", "1", "-b", "16", str(cls.silence), "trim", "0", "1")

    @classmethod
    def prepare(cls):
        """What else a suite needs before the program starts."""

    @classmethod
    def start_program(cls):
        desktop = cls.desktop
        cls.segments, cls.log = desktop.folder / "segments", desktop.folder / "log"
        plain = desktop.environment
        desktop.environment = dict(plain, LD_PRELOAD=":".join(cls.preloaded), TULVANE_TEST_SEGMENTS=str(cls.segments),
                                   TULVANE_TEST_PAUSE=str(cls.pause))
        with open(cls.log, "w", encoding="utf-8") as log:
            cls.program = desktop.start(str(PROGRAM), "--background", stderr=log)
        desktop.environment = plain
        desktop.wait(lambda: cls.status(), what="the program")

    @classmethod
    def status(cls):
        """How the program stands; nothing while it does not answer."""
        told = subprocess.run([PROGRAM, "status", "--json"], env=cls.desktop.environment, capture_output=True, text=True,
                              timeout=LIMIT).stdout
        return json.loads(told) if told else {}

    def listen_again(self):
        """After the session bus has come back: what told the phases was on the one before."""
        type(self).phases = Phases(self.desktop)

    def told(self, since):
        """Whether the user was shown a notice or an error since then."""
        return any(moment >= since and phase in ("notice", "error") for moment, phase in self.phases.seen)

    def recognised(self, since):
        """What the engine has given since its file was so long."""
        data, texts = self.segments.read_bytes()[since:] if self.segments.exists() else b"", []
        while b"\n" in data:
            head, data = data.split(b"\n", 1)
            index, length = map(int, head.split())
            texts = [*texts[:index], data[:length].decode(errors="replace")]
            data = data[length:]
        raw = "".join(texts)
        if not raw.strip():
            return ""
        return subprocess.run([PROGRAM, "clean"], input=raw, capture_output=True, text=True, check=True,
                              env=self.desktop.environment).stdout.rstrip("\n")

    def logged(self, line, since, limit=10):
        """Waits until the program's log has the line, from so many bytes on; whether it came."""
        try:
            self.desktop.wait(lambda: line in self.log.read_text(encoding="utf-8")[since:], limit=limit, pause=0.005)
            return True
        except TimeoutError:
            return False

    def within(self, seconds):
        time.sleep(self.random.uniform(0, seconds))

    def at_rest(self, limit=LIMIT):
        """Once the program answers that no dictation is under way."""
        def rests():
            status = self.status()
            return status if status.get("phase") in AT_REST else None
        return self.desktop.wait(rests, limit=limit, what="the end of the dictation")

    def clipboard(self):
        try:
            return subprocess.run(["xclip", "-selection", "clipboard", "-o"], env=self.desktop.environment, text=True,
                                  capture_output=True, timeout=5).stdout
        except subprocess.TimeoutExpired:
            return ""

    def happened(self, since):
        return f"seed {self.seed}; {self.phases.seen[-6:]}; log:\n" + self.log.read_text(encoding="utf-8")[since:][-2000:]

    def speak(self, sound, phase, fault):
        """Holds the hotkey and speaks; `fault` strikes at a random point of the phase."""
        began = len(self.log.read_text(encoding="utf-8"))
        if phase == "before":
            fault.strike()
            self.within(0.3)
        self.keyboard.press(ALT, SPACE)
        self.logged("Recording started", began, limit=3)
        player = self.desktop.start("paplay", "--device=micsink", str(sound))
        if phase == "recording":
            self.within(1.0)
            fault.strike()
        try:
            player.wait(6)
        except subprocess.TimeoutExpired:
            player.kill()
        recognised = self.segments.stat().st_size if self.segments.exists() else 0
        self.keyboard.release(ALT, SPACE)
        if phase == "transcribing":
            self.within(self.pause / 1000)
            fault.strike()
        elif phase == "inserting":
            deadline = time.monotonic() + 5
            while time.monotonic() < deadline and \
                    (self.segments.stat().st_size if self.segments.exists() else 0) == recognised:
                time.sleep(0.002)
            self.within(0.3)
            fault.strike()
        elif phase == "notice":
            self.logged("Recording stopped", began)
            self.within(1.5)
            fault.strike()

    def dictate(self, phase=None, fault=None, limit=LIMIT):
        """One dictation; where its text got to: field, clipboard, history, or none where none was recognised."""
        history = self.at_rest()["historyCount"]
        before, log = self.field.text(), len(self.log.read_text(encoding="utf-8"))
        length = self.segments.stat().st_size if self.segments.exists() else 0
        self.speak(self.silence if phase == "notice" else self.sound, phase, fault)
        if fault:
            self.meanwhile = fault.over(lambda: self.field.text() != before)
        status = self.at_rest(limit)
        self.assertIsNone(self.program.poll(), "the program has ended: " + self.happened(log))
        text = self.recognised(length)
        if not text:
            return "none"
        place = self.place(text, before, status, history)
        self.assertTrue(place, f"the text is lost; {status} {self.field.text()[len(before):]!r} {self.happened(log)}")
        return place

    def place(self, text, before, status, history):
        try:
            self.desktop.wait(lambda: self.field.text()[len(before):] == text, limit=3)
            return "field"
        except TimeoutError:
            pass
        self.assertEqual(self.field.text()[len(before):], "", "a part of the text, or more than it, has arrived")
        if self.clipboard().strip() == text.strip():
            return "clipboard"
        return "history" if status["historyCount"] > history or status["historyCount"] == 25 else ""
