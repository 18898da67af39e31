"""The feedback sounds: that they are what their script makes, and what a listener may expect of them."""
import array
import cmath
import itertools
import math
import subprocess
import sys
import unittest
import wave
from pathlib import Path
from tempfile import TemporaryDirectory

ROOT = Path(__file__).resolve().parents[2]
FOLDER = ROOT / "resources" / "sounds"
NAMES = ("Pop", "Tink", "Morse", "Basso")
FULL_SCALE = 32768


def load(name):
    with wave.open(str(FOLDER / f"{name}.wav")) as file:
        samples = array.array("h", file.readframes(file.getnframes()))
        if sys.byteorder == "big":
            samples.byteswap()
        return file.getparams(), [sample / FULL_SCALE for sample in samples]


def pitch(samples, rate):
    """The strongest frequency, in Hz."""
    def strength(hertz):
        turn = -2j * math.pi * hertz / rate
        return abs(sum(sample * cmath.exp(turn * at) for at, sample in enumerate(samples)))
    return max((120 * 1.06 ** step for step in range(48)), key=strength)


def silences(samples, rate):
    """How many silent stretches of at least 10 ms lie between sounding ones."""
    loud = [any(abs(sample) > 0.01 for sample in samples[at:at + rate // 100])
            for at in range(0, len(samples) - rate // 100, rate // 100)]
    stretches = [sounding for sounding, _ in itertools.groupby(loud)]
    return len([at for at in range(1, len(stretches) - 1) if not stretches[at]])


class SoundsTest(unittest.TestCase):
    def test_the_files_are_what_the_script_makes(self):
        with TemporaryDirectory() as folder:
            subprocess.run([sys.executable, str(ROOT / "tools" / "make-sounds"), folder], check=True, timeout=60)
            made = {path.name: path.read_bytes() for path in Path(folder).iterdir()}
        kept = {path.name: path.read_bytes() for path in FOLDER.glob("*.wav")}
        self.assertEqual(sorted(made), sorted(f"{name}.wav" for name in NAMES))
        # Compared by hand: a difference in bytes would be pages long.
        self.assertEqual(made.keys(), kept.keys())
        self.assertEqual([name for name in made if made[name] != kept[name]], [])

    def test_they_are_mono_16_bits_and_48_khz(self):
        for name in NAMES:
            params, samples = load(name)
            self.assertEqual((params.nchannels, params.sampwidth, params.framerate), (1, 2, 48000), name)
            self.assertEqual(params.nframes, len(samples), name)

    def test_they_are_short(self):
        for name, (least, most) in {"Pop": (60, 120), "Tink": (60, 120), "Morse": (100, 300),
                                    "Basso": (200, 450)}.items():
            params, samples = load(name)
            length = 1000 * len(samples) / params.framerate
            self.assertTrue(least <= length <= most, f"{name}: {length} ms")

    def test_they_are_quiet_but_audible(self):
        for name in NAMES:
            peak = 20 * math.log10(max(map(abs, load(name)[1])))
            self.assertTrue(-24 <= peak <= -12, f"{name}: {peak} dB")

    def test_they_begin_and_end_in_silence_without_a_step(self):
        for name in NAMES:
            samples = load(name)[1]
            for edge in (samples[:12], samples[-12:]):
                self.assertLess(max(map(abs, edge)), 0.002, name)
            self.assertEqual((samples[0], samples[-1]), (0, 0), name)
            steps = (abs(after - before) for before, after in zip(samples, samples[1:]))
            self.assertLess(max(steps), 0.05, name)

    def test_they_have_no_constant_part(self):
        for name in NAMES:
            samples = load(name)[1]
            self.assertLess(abs(sum(samples) / len(samples)), 0.002, name)

    def test_they_differ_in_pitch(self):
        pitches = []
        for name in NAMES:
            params, samples = load(name)
            pitches.append(pitch(samples, params.framerate))
        for one, other in itertools.combinations(sorted(pitches), 2):
            self.assertGreater(other / one, 1.05, pitches)
        self.assertEqual(min(pitches), pitches[NAMES.index("Basso")])

    def test_the_start_rises_and_the_stop_falls(self):
        for name, rises in {"Pop": True, "Tink": False}.items():
            params, samples = load(name)
            third = len(samples) // 3
            first, last = (pitch(part, params.framerate) for part in (samples[:third], samples[-third:]))
            self.assertTrue(last > 1.2 * first if rises else first > 1.2 * last, f"{name}: {first} to {last} Hz")

    def test_only_the_delivery_is_a_double(self):
        self.assertEqual({name: silences(load(name)[1], 48000) for name in NAMES},
                         {"Pop": 0, "Tink": 0, "Morse": 1, "Basso": 0})


if __name__ == "__main__":
    unittest.main()
