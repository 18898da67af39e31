"""What the model is measured on; none of it is ever trained on."""
import json
import random
from dataclasses import replace
from pathlib import Path

import numpy as np

from . import corpus
from .audio import SAMPLE_RATE
from .espeak import Synthesiser, Voice
from .grammar import TEXT, Grammar
from .voices import EARLIER_VARIANTS, HELD_OUT_VARIANTS, TRAINING_VARIANTS, random_voice

SPEEDS = {"slow": 130, "normal": 175, "fast": 230}
TAKE_SECONDS = [10, 31, 59, 120]
MARKER_SPACING = 5  # seconds
_CARRIERS = {
    "no": ["Det neste ordet er {}.", "Nå sier jeg {}.", "Her kommer {}, takk.", "Vi snakker om {} nå."],
    "nn": ["Det neste ordet er {}.", "No seier eg {}.", "Her kjem {}, takk.", "Vi snakkar om {} no."],
    "en": ["The next word is {}.", "Now I say {}.", "Here comes {}, please.", "We talk about {} now."],
}
_MARKERS = {
    "no": "melk brød kaffe fisk suppe jakke hund katt sykkel telefon nøkkel billett kake frukt musikk kart film egg "
          "ost blomster penger klær poteter hjelp".split(),
    "nn": "mjølk brød kaffi fisk suppe jakke hund katt sykkel telefon kjøt billett kake frukt musikk kart film egg "
          "ost blomar pengar klede poteter hjelp".split(),
    "en": "milk bread coffee fish soup water music money fruit cheese flowers clothes shoes potatoes cake meat food "
          "news eggs help tea oranges paper rice".split(),
}


class SoundFile:
    """Writes pieces of sound and their descriptions as a corpus."""

    def __init__(self, base: Path):
        self._pcm = open(f"{base}.pcm", "wb")
        self._lines = open(f"{base}.jsonl", "w", encoding="utf-8")
        self._offset = 0

    def add(self, samples: np.ndarray, **description):
        description.update(offset=self._offset, length=len(samples))
        self._lines.write(json.dumps(description, ensure_ascii=False) + "\n")
        self._pcm.write(samples.astype(np.int16).tobytes())
        self._offset += len(samples)

    def close(self):
        self._pcm.close()
        self._lines.close()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()


def fixed_sentences(name: str, base: Path):
    """Sentences from a file, spoken by espeak-ng's own voices."""
    entries = []
    for line in (TEXT / name).read_text(encoding="utf-8").splitlines():
        kind, text = line.split("\t")[:2]
        entries.append(corpus.entry(kind, (text, text), Voice("en-us" if kind == "en" else "nb")))
    corpus.speak_all(base, entries)


def earlier_sentences() -> list:
    """(kind, (Bokmål or English, Nynorsk or English)): unseen by every model so far. The first half was held out
    as sentences, the second as sentences and voices."""
    lines = (TEXT / "earlier-test-sentences.tsv").read_text(encoding="utf-8").splitlines()
    return [(kind, (first, second)) for kind, first, second in (line.split("\t") for line in lines)]


def earlier(data: Path):
    """Test sets of the sentences and of the voices that the first model already knew, or was kept from."""
    sentences, rng = earlier_sentences(), random.Random(31)
    half = len(sentences) // 2
    for name, part, variants in (("earlier-sentences", sentences[:half], EARLIER_VARIANTS),
                                 ("earlier-voices", sentences[half:], HELD_OUT_VARIANTS)):
        corpus.speak_all(data / name, [corpus.entry(kind, texts, random_voice(rng, kind, variants))
                                       for kind, texts in part])


def with_noise(samples: np.ndarray, ratio: float, seed: int) -> np.ndarray:
    """White noise at `ratio` dB below the speech."""
    sound = samples.astype(np.float64)
    power = np.sqrt((sound**2).mean())
    noise = np.random.default_rng(seed).standard_normal(len(sound)) * power * 10 ** (-ratio / 20)
    return np.clip(sound + noise, -32768, 32767)


def speeds(base: Path, each: int = 90):
    """The same unseen sentences at three speeds, clean and with noise at 20 dB."""
    rng, speaker = random.Random(42), Synthesiser()
    planned = [corpus.entry(kind, texts, random_voice(rng, kind, ["", "m3", "f2", "Alex", "steph2"]))
               for kind, texts in rng.sample(earlier_sentences()[:400], each)]
    with SoundFile(base) as output:
        for number, item in enumerate(planned):
            for speed, rate in SPEEDS.items():
                samples = speaker.speak(item["spoken"], replace(Voice(*item["voice"]), rate=rate, gap=0)).samples
                output.add(samples, **dict(item, speed=speed, noise="clean"))
                output.add(with_noise(samples, 20, number), **dict(item, speed=speed, noise="20 dB"))


def _take(speaker, rng, kind: str, voice: Voice, seconds: int, running: bool) -> tuple:
    """Sound of `seconds`, and (marker, start, end) in seconds. Running speech has no pauses to end a window in."""
    markers = rng.sample(_MARKERS[kind], len(_MARKERS[kind]))
    pieces, heard, at = [], [], 0
    for marker in markers[: -(-seconds // MARKER_SPACING)]:
        sentence = rng.choice(_CARRIERS[kind]).format(marker)
        if running:
            sentence += " " + Grammar("en" if kind == "en" else "no").sentence(rng, True, 0.0)[kind == "nn"]
        spoken = speaker.speak(sentence, voice)
        position = next(start for character, start in spoken.words if sentence[character:].startswith(marker))
        samples = spoken.samples
        if not running:
            room = MARKER_SPACING * SAMPLE_RATE
            samples = np.concatenate([samples[:room], np.zeros(max(0, room - len(samples)), np.int16)])
        heard.append((marker, (at + position) / SAMPLE_RATE))
        pieces.append(samples)
        at += len(samples)
        if at >= seconds * SAMPLE_RATE:
            break
    sound = np.concatenate(pieces)[: seconds * SAMPLE_RATE]
    return sound, [(marker, start) for marker, start in heard if start < len(sound) / SAMPLE_RATE - 0.7]


def long_takes(base: Path):
    rng, speaker = random.Random(99), Synthesiser()
    with SoundFile(base) as output:
        for kind in corpus.KINDS:
            for variant in ("", "f2", "m3"):
                for running in (False, True):
                    for seconds in TAKE_SECONDS:
                        voice = Voice("en-us" if kind == "en" else "nb", variant, 150 if not running else 165)
                        sound, markers = _take(speaker, rng, kind, voice, seconds, running)
                        output.add(sound, kind=kind, running=running, seconds=seconds, markers=markers)


def without_speech(base: Path):
    rng = np.random.default_rng(5)
    time = np.arange(2 * SAMPLE_RATE) / SAMPLE_RATE
    clicks = np.zeros(len(time))
    clicks[[5000, 12000, 20000]] = 0.8
    burst = np.concatenate([rng.standard_normal(400) * 0.1 * np.exp(-np.arange(400) / 80), np.zeros(5000)])
    sounds = {"zeros, 0.3 s": np.zeros(4800), "zeros, 1.5 s": np.zeros(24000), "zeros, 10 s": np.zeros(160000),
              "zeros, 65 s": np.zeros(65 * SAMPLE_RATE), "clicks": clicks, "keyboard": np.tile(burst, 6)}
    for level in (-80, -60, -40, -20):
        sounds[f"white noise, {level} dB"] = rng.standard_normal(len(time)) * 10 ** (level / 20)
    for frequency, level in ((50, -30), (100, -12), (440, -30), (440, -12), (440, -3), (1000, -12), (3000, -20)):
        sounds[f"{frequency} Hz, {level} dB"] = 10 ** (level / 20) * np.sin(2 * np.pi * frequency * time)
    sounds["chord"] = sum(np.sin(2 * np.pi * f * time) for f in (262, 330, 392)) * 0.1
    long = np.arange(12 * SAMPLE_RATE) / SAMPLE_RATE
    sounds["440 Hz, -12 dB, 12 s"] = 0.25 * np.sin(2 * np.pi * 440 * long)
    with SoundFile(base) as output:
        for name, sound in sounds.items():
            output.add(np.clip(sound * 32767, -32768, 32767), name=name)


def synthesise(data: Path):
    corpus.speak_all(data / "sentences", corpus.plan(360, 777, TRAINING_VARIANTS, held_out=True))
    corpus.speak_all(data / "voices", corpus.plan(360, 778, HELD_OUT_VARIANTS, held_out=True))
    earlier(data)
    fixed_sentences("handwritten.tsv", data / "handwritten")
    speeds(data / "speeds")
    long_takes(data / "takes")
    without_speech(data / "nothing")
