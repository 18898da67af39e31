"""Takes for training: single utterances, cut ones, and windows of up to 30 s put together from several.

The recogniser hears a long take in windows of exactly 30 s, which begin and end wherever they happen to, also
in the middle of a word, and hands the text of the windows before to the decoder. So windows are cut here in the same way, and a word belongs to a window when its
middle lies inside: then each word of a long take is written once.
"""
from collections import defaultdict
from dataclasses import dataclass

import numpy as np

from .audio import SAMPLE_RATE, stretched, tones


@dataclass
class Take:
    """Sound with the text that is to be written and the text as spoken (they differ across the written forms)."""

    samples: np.ndarray
    text: str
    spoken: str
    kind: str
    written: dict  # empty when the take is cut: then only `text` is known
    history: str = ""  # what was said before the window began


def _word_middles(item: dict, factor: float) -> list:
    """The middle sample of every word; words that were spoken as one share it."""
    starts, length = item["starts"], item["length"]
    words = item["spoken"].split()
    middles = [0] * len(words)
    following = length
    for i in range(len(words) - 1, -1, -1):
        if starts[i] < 0:
            middles[i] = None
            continue
        spoken = int(SAMPLE_RATE * (0.12 + 0.07 * len(words[i])))
        middles[i] = (starts[i] + min(following, starts[i] + spoken)) // 2
        following = starts[i]
    for i, middle in enumerate(middles):
        if middle is None:
            middles[i] = middles[i - 1] if i else 0
    return [int(middle / factor) for middle in middles]


def cut(samples: np.ndarray, words: list, kind: str, begin: int, end: int) -> Take:
    """`words` are (text, middle sample)."""
    text = " ".join(word for word, middle in words if begin <= middle < end)
    history = " ".join(word for word, middle in words if middle < begin)
    return Take(samples[begin:end], text, text, kind, {}, history)


class TakeMaker:
    def __init__(self, corpus, rng: np.random.Generator):
        self._corpus, self._rng = corpus, rng
        self._by_voice = defaultdict(list)
        for i, item in enumerate(corpus.entries):
            self._by_voice[item["kind"], item["voice"][0], item["voice"][1]].append(i)
        self._by_kind = defaultdict(list)
        for key, members in self._by_voice.items():
            self._by_kind[key[0]].extend(members)

    def single(self, index: int) -> Take:
        """One whole utterance; sometimes with quiet around it, sometimes cut at one end."""
        rng, item = self._rng, self._corpus.entries[index]
        factor = self._factor()
        samples = stretched(self._corpus.samples(item), factor)
        if rng.random() < 0.06:
            words = list(zip(item["spoken"].split(), _word_middles(item, factor)))
            place = int(rng.uniform(0, len(samples) * 0.8))
            begin, end = (place, len(samples)) if rng.random() < 0.6 else (0, max(place, 4000))
            return cut(samples, words, item["kind"], begin, end)
        before, after = (int(rng.choice([0, 0, 0.3, 0.6]) * rng.random() * SAMPLE_RATE) for _ in range(2))
        samples = np.concatenate([np.zeros(before, np.float32), samples, np.zeros(after, np.float32)])
        return Take(samples, item["spoken"], item["spoken"], item["kind"], item["written"])

    def window(self, index: int, seconds: float) -> Take:
        """`seconds` of speech by one voice (or sometimes several), beginning and ending anywhere."""
        rng, entries = self._rng, self._corpus.entries
        first = entries[index]
        kind = first["kind"]
        members = self._by_voice[kind, first["voice"][0], first["voice"][1]]
        if rng.random() < 0.25 or len(members) < 20:
            members = self._by_kind[kind]
        factor, pause_scale = self._factor(), rng.choice([0.25, 0.5, 1.0, 4.0], p=[0.35, 0.4, 0.15, 0.1])
        wanted = int(seconds * SAMPLE_RATE)
        pieces, words, length = [], [], 0
        begin = int(rng.uniform(0, 3) * SAMPLE_RATE) if rng.random() < 0.5 else 0
        while length < wanted + begin:
            samples = stretched(self._corpus.samples(first), factor)
            middles = _word_middles(first, factor)
            words += [(word, length + middle) for word, middle in zip(first["spoken"].split(), middles)]
            pause = self._pause(rng.exponential(pause_scale))
            pieces += [samples * 10 ** rng.uniform(-0.25, 0.05), pause]
            length += len(samples) + len(pause)
            first = entries[members[rng.integers(len(members))]]
        take = cut(np.concatenate(pieces), words, kind, begin, begin + wanted)
        earlier = [entries[members[rng.integers(len(members))]]["spoken"] for _ in range(rng.integers(0, 10))]
        take.history = " ".join(earlier + [take.history])
        return take

    def _pause(self, seconds: float) -> np.ndarray:
        count = int(min(seconds, 9.0) * SAMPLE_RATE) + 400
        pause = np.zeros(count, np.float32)
        if self._rng.random() < 0.04:
            beep = min(count, int(0.4 * SAMPLE_RATE))
            pause[:beep] = tones(beep, self._rng) * 0.1
        return pause

    def _factor(self) -> float:
        return float(np.exp(self._rng.uniform(-0.14, 0.14))) if self._rng.random() < 0.35 else 1.0
