"""Sentences from patterns: Bokmål and Nynorsk side by side, and English.

A sentence is a pair of texts. For Norwegian they are the two written forms, for English twice the same.
"""
import hashlib
import random
import re
from collections import Counter
from pathlib import Path

from . import inflection
from .invented import invented_word

TEXT = Path(__file__).resolve().parent.parent / "text"
_SLOT = re.compile(r"\{(\w+)\}")
_WORD = re.compile(r"[^\s.,?!]+")
_HELD_OUT_SHARE = 13  # of 256


def split_pair(item: str) -> tuple:
    first, _, second = item.partition("|")
    return first.strip(), (second or first).strip()


def read_sections(path: Path) -> dict:
    """Sections of a text file: name to list of lines, comments left out."""
    sections, name = {}, ""
    for line in path.read_text(encoding="utf-8").splitlines():
        line = line.strip()
        if not line or line.startswith("#"):
            continue
        if line.startswith("["):
            name = line.strip("[]")
            sections.setdefault(name, [])
        else:
            sections[name].append(line)
    return sections


def read_slots(path: Path) -> dict:
    slots = {}
    for name, lines in read_sections(path).items():
        items = lines if name == "sentences" else [item for line in lines for item in line.split(";")]
        slots[name] = [split_pair(item) for item in items if item.strip()]
    return slots


def words_of(text: str) -> list:
    return _WORD.findall(text)


def sentence_key(text: str) -> str:
    return " ".join(words_of(text.lower()))


def capitalised(text: str) -> str:
    return text[0].upper() + text[1:]


def finished(text: str) -> str:
    text = text.strip()
    return capitalised(text if text[-1] in ".?!" else text + ".")


def numbers() -> list:
    values = list(range(13, 100)) + [100, 150, 200, 250, 300, 400, 500, 1000] + list(range(2020, 2031))
    return [(str(value), str(value)) for value in values]


class Grammar:
    """One language's patterns. `language` is "no" (both written forms) or "en"."""

    def __init__(self, language: str):
        self.language = language
        stem = "norwegian" if language == "no" else "english"
        self.slots = {"bignum": numbers()}
        for path in (TEXT / f"{stem}.txt", TEXT / f"{stem}-everyday.txt"):
            for name, items in read_slots(path).items():
                self.slots.setdefault(name, []).extend(items)
        forms = inflection.norwegian if language == "no" else inflection.english
        self.slots.update(forms(read_sections(TEXT / f"{stem}-words.txt")))
        self.patterns = self.slots.pop("sentences")
        fixed = (pattern for pattern in self.patterns if "{" not in pattern[0])
        self._fixed = {sentence_key(pattern[0]) for pattern in fixed}
        self._words = self._all_words()
        self._openings = self._common_openings()

    def fill(self, pattern: tuple, rng: random.Random, invention: float = 0.0) -> tuple:
        """Fills the slots, both forms with the same choice; names are sometimes invented."""
        first, second = pattern
        while slot := _SLOT.search(first):
            name = slot.group(1)
            if name in ("name", "city") and rng.random() < invention:
                choice = (capitalised(invented_word(rng, self.language)),) * 2
            else:
                choice = rng.choice(self.slots[name])
            first = first.replace(slot.group(0), choice[0], 1)
            second = second.replace(slot.group(0), choice[1], 1)
        return first, second

    def is_held_out(self, text: str) -> bool:
        """A fixed twentieth of all sentences, never trained on, told by the text alone.

        Sentences of one or two words, and patterns without a slot, are everyday formulas and always trained."""
        key = sentence_key(text)
        if key in self._fixed or len(key.split()) < 3:
            return False
        return hashlib.sha256(key.encode()).digest()[0] < _HELD_OUT_SHARE

    def sentence(self, rng: random.Random, held_out: bool = False, salad: float = 0.14) -> tuple:
        while True:
            if rng.random() < salad:
                pair = self._salad(rng)
            else:
                pair = self.fill(rng.choice(self.patterns), rng, invention=0.12)
            pair = finished(pair[0]), finished(pair[1])
            if self.is_held_out(pair[0]) == held_out:
                return pair

    def utterance(self, rng: random.Random, held_out: bool = False, salad: float = 0.14) -> tuple:
        """One to three sentences of at most 26 words together."""
        while True:
            count = rng.choices([1, 2, 3], [0.62, 0.27, 0.11])[0]
            pairs = [self.sentence(rng, held_out, salad) for _ in range(count)]
            texts = " ".join(p[0] for p in pairs), " ".join(p[1] for p in pairs)
            if len(texts[0].split()) <= 26:
                return texts

    def _salad(self, rng: random.Random) -> tuple:
        """Words in no order: teaches to write what is heard, not what the patterns would have said."""
        pairs = [rng.choice(self._openings)]
        for _ in range(rng.randint(2, 8)):
            if rng.random() < 0.16:
                word = invented_word(rng, self.language)
                pairs.append((capitalised(word) if rng.random() < 0.3 else word,) * 2)
            else:
                pairs.append(rng.choice(self._words))
        if rng.random() < 0.25:
            comma = rng.randrange(len(pairs) - 1)
            pairs[comma] = tuple(word + "," for word in pairs[comma])
        return " ".join(p[0] for p in pairs), " ".join(p[1] for p in pairs)

    def _all_words(self) -> list:
        pairs = set()
        patterns = [item for items in self.slots.values() for item in items] + self.patterns
        for first, second in patterns:
            first, second = (_SLOT.sub(" ", text) for text in (first, second))
            if len(words_of(first)) == len(words_of(second)):
                pairs.update(zip(words_of(first), words_of(second)))
        return sorted(pairs)

    def _common_openings(self) -> list:
        rng = random.Random(7)
        counted = Counter()
        for _ in range(20000):
            pair = self.fill(rng.choice(self.patterns), rng)
            counted[tuple(words_of(capitalised(text))[0] for text in pair)] += 1
        return sorted(pair for pair, number in counted.items() if number >= 12)
