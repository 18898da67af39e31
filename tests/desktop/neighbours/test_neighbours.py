"""What a program on a desktop lives beside is killed, or stands still, at any point of a dictation: the program stays,
says what happened, works again once the other is back, and no recognised text is lost."""
import collections
import os
import sys
import time
import unittest

from dictations import DictationsAmongNeighbours, Fault

SOAK = os.environ.get("TULVANE_SOAK", "0") != "0"
COUNT = int(os.environ.get("TULVANE_FAULTS", 300 if SOAK else 16))
ONLY = os.environ.get("TULVANE_NEIGHBOUR")  # one of them, to look at its faults alone
TELLS = "TULVANE_TELL" in os.environ  # each dictation as it ends
PHASES = ("before", "recording", "transcribing", "inserting", "notice")
# Without these there is nothing to record; without the others a text gets to the field all the same.
DEAF = ("sound server",)


class Neighbours(DictationsAmongNeighbours):
    @classmethod
    def tearDownClass(cls):
        for (name, deed), places in sorted(cls.places.items()) if SOAK else ():
            print(f"{deed} {name}: {dict(places)}", file=sys.stderr)

    def seconds(self):
        """Most faults are short, a few last for half a minute."""
        if "TULVANE_SECONDS" in os.environ:
            return float(os.environ["TULVANE_SECONDS"])
        return min(30.0, self.random.paretovariate(0.8)) if SOAK else 0.5

    def one(self, number):
        """The neighbours in turn, each killed and then frozen."""
        name = ONLY or list(self.neighbours)[number // 2 % len(self.neighbours)]
        neighbour, deed = self.neighbours[name], ("killed", "frozen")[number % 2]
        # The few of a small count meet every phase.
        phase = self.random.choice(PHASES) if SOAK else PHASES[(number + 1) % len(PHASES)]
        seconds = self.seconds()
        fault = Fault(neighbour.kill, neighbour.come_back, seconds) if deed == "killed" else \
            Fault(neighbour.freeze, neighbour.thaw, seconds)
        method = self.random.choice(("paste", "accessibilityThenPaste"))
        began = time.monotonic()
        with self.subTest(number=number, neighbour=name, deed=deed, phase=phase, seconds=round(seconds, 1), method=method):
            self.desktop.set(insertionMethod=method)
            self.neighbours["clipboard owner"].own()
            self.field.bring_to_front()
            place = self.dictate(phase, fault)
            bus_ended = (name, deed) == ("session bus", "killed")
            if bus_ended:
                self.listen_again()
            if place in ("none", "clipboard", "history"):
                self.assertTrue(self.told(began) or bus_ended, f"{place}, and nothing was said")
            if name not in DEAF and phase != "notice":
                self.assertIn(place, ("field", "clipboard"))
            if place == "field" and self.meanwhile:
                place = "field meanwhile"
            self.places.setdefault((name, deed), collections.Counter())[f"{phase}: {place}"] += 1
            if TELLS:
                print(f"{number}: {name} {deed} {seconds:.1f} s, {phase}, {method}: {place}, told {self.told(began)}, "
                      f"{time.monotonic() - began:.1f} s", file=sys.stderr)
        return name

    def test_a_neighbour_that_fails_takes_no_text_along(self):
        for number in range(COUNT):
            name = self.one(number)
            if SOAK or name in DEAF or number == COUNT - 1:
                with self.subTest(after=number):
                    self.field.bring_to_front()
                    self.assertEqual(self.dictate(), "field")


if __name__ == "__main__":
    unittest.main()
