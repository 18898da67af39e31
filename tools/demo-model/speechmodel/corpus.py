"""Spoken sentences on disk: NAME.pcm (16 kHz, 16 bit, one after the other) and NAME.jsonl (one line for each)."""
import json
import random
from multiprocessing import Pool
from pathlib import Path

import numpy as np

from .audio import SAMPLE_RATE
from .espeak import Synthesiser, Voice
from .grammar import TEXT, Grammar
from .voices import random_voice

KINDS = ["no", "nn", "en"]
KIND_WEIGHTS = [0.42, 0.18, 0.40]
_SHORTEST, _LONGEST = 0.25, 16.0  # seconds

_synthesiser = None


def word_starts(text: str, events: list) -> list:
    """The start sample of each word of `text`; -1 where espeak-ng spoke it as one with the word before."""
    starts, position = [], 0
    for word in text.split():
        begin = text.index(word, position)
        position = begin + len(word)
        heard = [sample for character, sample in events if begin <= character < position]
        starts.append(min(heard) if heard else -1)
    return starts


def _speak(entry: dict) -> tuple:
    global _synthesiser
    _synthesiser = _synthesiser or Synthesiser()
    spoken = _synthesiser.speak(entry["spoken"], Voice(*entry["voice"]))
    return spoken.samples, word_starts(entry["spoken"], spoken.words)


def entry(kind: str, texts: tuple, voice: Voice) -> dict:
    """`texts` are Bokmål and Nynorsk, or English twice."""
    spoken = texts[1] if kind == "nn" else texts[0]
    written = {"en": texts[0]} if kind == "en" else {"no": texts[0], "nn": texts[1]}
    return dict(kind=kind, spoken=spoken, written=written,
                voice=[voice.language, voice.variant, voice.rate, voice.pitch, voice.gap])


def excluded_texts() -> set:
    """The fixed test sentences: whatever else is measured, these are never trained on."""
    texts = set()
    for name in ("handwritten.tsv", "earlier-test-sentences.tsv"):
        for line in (TEXT / name).read_text(encoding="utf-8").splitlines():
            texts.update(line.split("\t")[1:])
    return texts


def plan(count: int, seed: int, variants: list, held_out: bool = False) -> list:
    """Decides every sentence and voice before anything is spoken, so that a seed always gives the same list."""
    rng = random.Random(seed)
    grammars = {"no": Grammar("no"), "en": Grammar("en")}
    excluded = excluded_texts()
    entries = []
    while len(entries) < count:
        kind = rng.choices(KINDS, KIND_WEIGHTS)[0]
        texts = grammars["en" if kind == "en" else "no"].utterance(rng, held_out)
        voice = random_voice(rng, kind, variants)
        if not excluded.intersection(texts):
            entries.append(entry(kind, texts, voice))
    return entries


def speak_all(base: Path, entries: list, processes: int = 2) -> int:
    """Writes the corpus; returns the number of samples. Overlong and empty results are left out."""
    offset = 0
    with open(f"{base}.pcm", "wb") as pcm, open(f"{base}.jsonl", "w", encoding="utf-8") as lines, Pool(processes) as pool:
        for item, (samples, starts) in zip(entries, pool.imap(_speak, entries, chunksize=16)):
            if not _SHORTEST * SAMPLE_RATE < len(samples) < _LONGEST * SAMPLE_RATE:
                continue
            lines.write(json.dumps(dict(item, offset=offset, length=len(samples), starts=starts),
                                   ensure_ascii=False) + "\n")
            pcm.write(samples.tobytes())
            offset += len(samples)
    return offset


class Corpus:
    """Read access to a corpus on disk; samples come as floats in -1..1."""

    def __init__(self, base: Path):
        self.entries = [json.loads(line) for line in open(f"{base}.jsonl", encoding="utf-8")]
        self._pcm = np.memmap(f"{base}.pcm", dtype=np.int16, mode="r")

    def __len__(self):
        return len(self.entries)

    def samples(self, item: dict) -> np.ndarray:
        start = item["offset"]
        return self._pcm[start : start + item["length"]].astype(np.float32) / 32768.0
