"""The wall clock jumps by an hour, forward and back, in each phase of a dictation: the text arrives, and what was counted is
how long was spoken, on the day that the clock then shows."""
import json
import os
import struct
import unittest

from dictations import DictationsAmongNeighbours

SOAK = os.environ.get("TULVANE_SOAK", "0") != "0"
HOUR = 3600
JUMPS = (HOUR, 0, -HOUR, 0)  # from the hour that the machine's clock shows
PHASES = ("before", "recording", "transcribing", "inserting", "notice")


class Jump:
    """Of the program's wall clock alone; what only goes forward is not touched."""

    def __init__(self, file, seconds):
        self.file, self.seconds = file, seconds

    def strike(self):
        with open(self.file, "r+b") as file:
            file.write(struct.pack("q", self.seconds))

    def over(self, _has_arrived):
        """It has happened."""
        return False


class Clock(DictationsAmongNeighbours):
    @classmethod
    def prepare(cls):
        cls.shift = cls.desktop.folder / "shift"
        cls.shift.write_bytes(struct.pack("q", 0))
        cls.preloaded.append(os.environ["TULVANE_SHIFTED_CLOCK"])
        cls.desktop.environment["TULVANE_TEST_CLOCK"] = str(cls.shift)

    def counted(self):
        totals = json.loads(self.desktop.tulvane("stats", "--period", "all", "--json"))
        return totals["dictations"], totals["speechSeconds"]

    def test_an_hour_each_way_in_every_phase(self):
        for number, phase in enumerate(PHASES):
            for seconds in JUMPS if SOAK else JUMPS[number % 4:][:1]:
                with self.subTest(phase=phase, seconds=seconds):
                    self.field.bring_to_front()
                    dictations, spoken = self.counted()
                    place = self.dictate(phase, Jump(self.shift, seconds))
                    self.assertEqual(place, "none" if phase == "notice" else "field")
                    if phase != "notice":
                        now = self.counted()
                        self.assertEqual(now[0], dictations + 1)
                        self.assertLess(now[1] - spoken, 20)
                        self.assertGreater(now[1] - spoken, 0.5)


if __name__ == "__main__":
    unittest.main()
