"""The machine is suspended, everything at once, in each phase of a dictation, and wakes up: nothing ends, no text is lost, and
no recording runs on after the key was let go."""
import os
import re
import signal
import time
import unittest

from dictations import DictationsAmongNeighbours

SOAK = os.environ.get("TULVANE_SOAK", "0") != "0"
SECONDS = 60 if SOAK else 1
PHASES = ("before", "recording", "transcribing", "inserting", "notice")


class Sleep:
    """Of everything on the desktop: the X server, the buses, the sound server, the program with the field, ours."""

    def __init__(self, desktop, *others):
        """`others`: processes of the desktop that do not show what they were started with."""
        self.desktop, self.others = desktop, others

    def strike(self):
        everything = {*self.desktop._descendants(), *self.others}
        for number in everything:
            self.desktop._signal(number, signal.SIGSTOP)
        time.sleep(SECONDS)
        for number in everything:
            self.desktop._signal(number, signal.SIGCONT)

    def over(self, _has_arrived):
        """Nothing is left to wait for."""
        return False


class Suspend(DictationsAmongNeighbours):
    def test_a_machine_that_sleeps_in_any_phase_wakes_up_with_everything(self):
        for phase in PHASES:
            with self.subTest(phase=phase):
                self.field.bring_to_front()
                began, log = time.monotonic(), len(self.log.read_text(encoding="utf-8"))
                place = self.dictate(phase, Sleep(self.desktop, self.program.pid, *self.neighbours["transfer helper"].numbers()))
                held = time.monotonic() - began
                if phase == "recording":  # what was said while the microphone slept cannot be known
                    self.assertTrue(place in ("field", "clipboard") or self.told(began), place)
                elif phase == "notice":
                    self.assertEqual(place, "none")
                else:
                    self.assertIn(place, ("field", "clipboard"))
                recorded = re.search(r"Recording stopped: ([\d.]+)s", self.log.read_text(encoding="utf-8")[log:])
                self.assertIsNotNone(recorded)
                self.assertLess(float(recorded[1]), held)
                self.assertFalse(self.hears())
                self.assertEqual(self.dictate(), "field")

    def hears(self):
        """Whether a program still has the microphone open: the remapped source is no program's."""
        streams = self.desktop.run("pactl", "list", "short", "source-outputs").splitlines()
        return [line for line in streams if line.split("\t")[2] != "-"]


if __name__ == "__main__":
    unittest.main()
