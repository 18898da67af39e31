"""Weights to start from, and the vocabulary that goes with the training sentences."""
import random
from pathlib import Path

import torch

from . import tokens
from .grammar import Grammar
from .invented import invented_word

LETTERS = "abcdefghijklmnopqrstuvwxyzæøåéê0123456789' "
_SAMPLE = 40000
_LEAST = 20  # how often a word stands in the sample to become a token; rarer words are spelled
_PIECES = 700


def vocabulary_for(data: Path) -> tuple:
    """The vocabulary (made once, then read from `data`) and the letters of the training-only letter head."""
    path = data / "vocabulary.json"
    if not path.exists():
        rng = random.Random(3)
        grammars = {"no": Grammar("no"), "en": Grammar("en")}
        texts = []
        for _ in range(_SAMPLE):
            language = "no" if rng.random() < 0.6 else "en"
            texts += set(grammars[language].utterance(rng))
        invented = [invented_word(rng, rng.choice(["no", "en"])) for _ in range(6000)]
        tokens.build_vocabulary(texts, invented, _LEAST, _PIECES).save(path)
    return tokens.Vocabulary.load(path), LETTERS


def load_into(network, path: Path):
    """Goes on with the averaged weights of a checkpoint."""
    network.load_state_dict(torch.load(path)["average"])
