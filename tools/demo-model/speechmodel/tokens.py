"""The vocabulary: which token stands for which bytes, and how text becomes tokens.

The table has the layout that a multilingual Whisper model has, so that whisper.cpp finds its special tokens
where it looks for them. Of the ordinary tokens only the first few thousand carry text: the 256 bytes, the
marks, the common words (with the space before them) and the pieces from which every other word is spelled.
"""
import json
import re
from collections import Counter
from pathlib import Path

EMPTY = 50256  # a token without text; what the model writes for "nothing was said"
END = 50257
START = 50258
ENGLISH = 50259
NORWEGIAN = 50288
NYNORSK = 50342
TRANSLATE = 50358
TRANSCRIBE = 50359
PREVIOUS = 50361
NO_SPEECH = 50362
NO_TIMESTAMPS = 50363
TEXT_TOKENS = 50257
TABLE_SIZE = 51865
SPECIAL = [EMPTY, END, START, ENGLISH, NORWEGIAN, NYNORSK, TRANSLATE, TRANSCRIBE, PREVIOUS, NO_SPEECH, NO_TIMESTAMPS]
LANGUAGE_TOKENS = {"en": ENGLISH, "no": NORWEGIAN, "nn": NYNORSK}

_UNIT = re.compile(r" ?[^\s.,?!]+|[.,?!]")
# How whisper.cpp cuts a prompt before it looks up the longest tokens: bytes, "C" locale.
_PROMPT_UNIT = re.compile(rb"'s|'t|'re|'ve|'m|'ll|'d| ?[A-Za-z]+| ?[0-9]+| ?[^\s A-Za-z0-9]+|\s+(?!\S)|\s+")


def units(text: str) -> list:
    """Words with the space before them, and marks."""
    return _UNIT.findall(" " + text)


class Vocabulary:
    def __init__(self, tokens: list):
        self.tokens = tokens
        self._ids = {token: i for i, token in enumerate(tokens)}
        self._longest = max(len(token) for token in tokens)

    def __len__(self):
        return len(self.tokens)

    def __contains__(self, token: bytes):
        return token in self._ids

    def spell(self, data: bytes) -> list:
        """The longest known piece first; every byte is a token, so this always ends."""
        ids, start = [], 0
        while start < len(data):
            end = min(len(data), start + self._longest)
            while data[start:end] not in self._ids:
                end -= 1
            ids.append(self._ids[data[start:end]])
            start = end
        return ids

    def encode(self, text: str) -> list:
        return [i for unit in units(text) for i in self.spell(unit.encode())]

    def encode_prompt(self, text: str) -> list:
        return [i for unit in _PROMPT_UNIT.findall(text.encode()) for i in self.spell(unit)]

    def decode(self, ids) -> str:
        return b"".join(self.tokens[i] for i in ids if i < len(self.tokens)).decode("utf-8", "replace")

    def rows(self) -> list:
        """The table rows that are trained, in the order of the trained matrix."""
        return list(range(len(self.tokens))) + SPECIAL

    def save(self, path: Path):
        path.write_text(json.dumps([token.hex() for token in self.tokens]))

    @staticmethod
    def load(path: Path) -> "Vocabulary":
        return Vocabulary([bytes.fromhex(token) for token in json.loads(path.read_text())])


def _merge(word: tuple, pair: tuple) -> tuple:
    merged, i = [], 0
    while i < len(word):
        if word[i : i + 2] == pair:
            merged.append(word[i] + word[i + 1])
            i += 2
        else:
            merged.append(word[i])
            i += 1
    return tuple(merged)


def learn_pieces(words: Counter, count: int, longest: int = 4) -> list:
    """The most useful letter groups of the words, by merging the commonest neighbours again and again."""
    spelled = {tuple(word): number for word, number in words.items()}
    pieces = []
    while len(pieces) < count:
        pairs = Counter()
        for word, number in spelled.items():
            for pair in zip(word, word[1:]):
                if len(pair[0].strip() + pair[1].strip()) <= longest:
                    pairs[pair] += number
        if not pairs:
            break
        best = min(pairs, key=lambda pair: (-pairs[pair], pair))
        pieces.append(best[0] + best[1])
        spelled = {_merge(word, best): number for word, number in spelled.items()}
    return pieces


def build_vocabulary(texts, spelled_words, least: int, piece_count: int) -> Vocabulary:
    """Words that stand `least` times in `texts` become tokens; all others are spelled.

    `spelled_words` are further words, not taught as wholes, from which the pieces are learnt."""
    counted = Counter(unit for text in texts for unit in units(text))
    common = sorted((u for u, n in counted.items() if n >= least and len(u.encode()) > 1),
                    key=lambda u: (-counted[u], u))
    known = set(common)
    letters = set("abcdefghijklmnopqrstuvwxyzæøåéABCDEFGHIJKLMNOPQRSTUVWXYZÆØÅ0123456789")
    rare = Counter(u for u in counted if u not in known and len(u) > 1)
    rare.update({" " + word: 1 for word in spelled_words})
    pieces = [" "] + sorted(" " + c for c in letters) + sorted(c for c in letters if len(c.encode()) > 1)
    pieces += [f"{n:02}" for n in range(100)] + [f" {n}" for n in range(10, 101)]
    pieces += learn_pieces(rare, piece_count)
    tokens = [bytes([i]) for i in range(256)]
    for token in common + pieces:
        if token.encode() not in set(tokens[:256]):
            tokens.append(token.encode())
    return Vocabulary(list(dict.fromkeys(tokens)))
