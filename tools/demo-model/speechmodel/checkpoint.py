"""Weights to start from, and the vocabulary that goes with the training sentences."""
import lzma
import random
from pathlib import Path

import torch

from . import ggml_file, tokens
from .grammar import Grammar
from .invented import invented_word
from .network import sinusoids

LETTERS = "abcdefghijklmnopqrstuvwxyzæøåéê0123456789' "
_SAMPLE = 40000
_LEAST = 20  # how often a word stands in the sample to become a token; rarer words are spelled
_PIECES = 700


def vocabulary_for(data: Path, start_from: Path = None) -> tuple:
    """The vocabulary (made once, then read from `data`) and the letters of the training-only letter head.

    Started from a model file, the file's words keep their places and ours come after them."""
    path = data / "vocabulary.json"
    if not path.exists():
        rng = random.Random(3)
        grammars = {"no": Grammar("no"), "en": Grammar("en")}
        texts = []
        for _ in range(_SAMPLE):
            language = "no" if rng.random() < 0.6 else "en"
            texts += set(grammars[language].utterance(rng))
        invented = [invented_word(rng, rng.choice(["no", "en"])) for _ in range(6000)]
        own = tokens.build_vocabulary(texts, invented, _LEAST, _PIECES).tokens
        known = _file_words(start_from) if start_from and start_from.suffix != ".pt" else []
        tokens.Vocabulary(list(dict.fromkeys(known + own))).save(path)
    return tokens.Vocabulary.load(path), LETTERS


def _read(path: Path) -> tuple:
    data = path.read_bytes()
    return ggml_file.read(lzma.decompress(data) if path.suffix == ".xz" else data)


def _file_words(path: Path) -> list:
    return [token for token in _read(path)[1] if token]


def _model_file_state(path: Path) -> tuple:
    _, names, tensors = _read(path)
    state = {name: torch.from_numpy(value.copy()) for name, value in tensors.items()}
    for name in ("encoder.conv1.bias", "encoder.conv2.bias"):
        state[name] = state[name].reshape(-1)
    return state, {token: i for i, token in reversed(list(enumerate(names))) if token}


def _known_rows(vocabulary, ids: dict) -> list:
    """(own row, row in the file's table) for every token that the file knows too."""
    pairs = []
    for row, token in enumerate(vocabulary.rows()):
        other = token if token >= tokens.EMPTY else ids.get(vocabulary.tokens[token])
        if other is not None:
            pairs.append((row, other))
    return pairs


def _continued(positions):
    """Goes on with sinusoids where the file's encoder positions have become constant (an earlier model's did)."""
    same = (positions == positions[-1]).all(1)
    known = int((~same).sum())
    if known < len(positions) - 1:
        wave = sinusoids(*positions.shape)
        learnt = (positions[known // 2 : known] - wave[known // 2 : known]).mean(0)
        positions[known:] = wave[known:] + learnt
    return positions


def load_into(network, vocabulary, path: Path):
    """Takes over everything that fits: from a checkpoint all, from a model file all but unknown words."""
    state = network.state_dict()
    if path.suffix == ".pt":
        state.update(torch.load(path)["average"])
    else:
        loaded, ids = _model_file_state(path)
        table = loaded.pop("decoder.token_embedding.weight")
        own = state["decoder.token_embedding.weight"]
        pairs = _known_rows(vocabulary, ids)
        own[:, 0] = table[[other for _, other in pairs], 0].mean() - 1.0
        own[[row for row, _ in pairs]] = table[[other for _, other in pairs]]
        loaded["encoder.positional_embedding"] = _continued(loaded["encoder.positional_embedding"])
        state.update(loaded)
    network.load_state_dict(state)
