"""Training batches: sound to mel frames, text to tokens, prompts, languages."""
import random
import re
from dataclasses import dataclass

import numpy as np
import torch

from . import audio, tokens
from .invented import invented_word
from .windows import TakeMaker

IGNORED = -100
EDGE = 4
_LONGEST_SPELLED = 400  # encoder frames; the letter loss of longer takes costs more time than it is worth
_LATEST = 200  # encoder frames
_LEAD = 1600  # silence before speech that does not begin with the window
_FOURIER = torch.from_numpy(audio.fourier_matrix())
_FILTERS = torch.from_numpy(audio.mel_filters())


def log_mel(samples, frames: int):
    """(batch, samples), zero-padded, to (batch, frames, 80): the first `frames` of what whisper.cpp computes.

    whisper.cpp mirrors the first 200 samples and pads with zeros to 30 s, so this is exact."""
    batch, count = samples.shape
    half = audio.FFT_SIZE // 2
    padded = torch.zeros(batch, frames * audio.HOP + audio.FFT_SIZE)
    padded[:, :half] = samples[:, 1 : half + 1].flip(1)
    kept = min(count, padded.shape[1] - half)
    padded[:, half : half + kept] = samples[:, :kept]
    cuts = padded.unfold(1, audio.FFT_SIZE, audio.HOP)[:, :frames].reshape(-1, audio.FFT_SIZE)
    spectrum = cuts @ _FOURIER
    bins = audio.FFT_SIZE // 2 + 1
    power = spectrum[:, :bins] ** 2 + spectrum[:, bins:] ** 2
    mel = (power @ _FILTERS.T).clamp(min=1e-10).log10().view(batch, frames, audio.MELS)
    loudest = mel.amax(dim=(1, 2), keepdim=True)
    return (torch.maximum(mel, loudest - 8.0) + 4.0) / 4.0


@dataclass
class Batch:
    mel: torch.Tensor
    length: int  # encoder frames of speech
    first: int  # where in the window they stand
    inputs: torch.Tensor
    labels: torch.Tensor
    letters: list  # spoken letters of each take; empty for long windows, which the letter head leaves out


@dataclass(frozen=True)
class Mixture:
    """What a batch is made of. `frames` is the size of a batch in encoder frames."""

    frames: int = 1200
    windows: float = 0.1  # share of batches that are windows put together from several utterances
    window_seconds: float = 30.0  # the longest of them
    prompts: float = 0.2
    late: float = 0.15  # share of batches in which the speech begins up to 4 s into the window
    silence: float = 0.045
    longest: float = 20.0  # seconds of a single utterance


class BatchMaker:
    def __init__(self, corpus, vocabulary, letters: str, seed: int, mixture: Mixture):
        self._corpus, self._vocabulary, self._mixture = corpus, vocabulary, mixture
        self._numpy, self._random = np.random.default_rng(seed), random.Random(seed)
        self._takes = TakeMaker(corpus, self._numpy)
        self._row = {token: row for row, token in enumerate(vocabulary.rows())}
        self._letter = {letter: i + 1 for i, letter in enumerate(letters)}
        self._lengths = np.array([item["length"] for item in corpus.entries])
        self._queue = []

    def next(self) -> Batch:
        rng = self._random
        prompted = rng.random() < self._mixture.prompts
        if rng.random() < self._mixture.windows:
            takes = self._window_takes()
        else:
            takes = [self._takes.single(i) for i in self._next_group()]
        return self._assemble([self._example(take, prompted) for take in takes])

    def _window_takes(self) -> list:
        """Windows of one length; every third batch has the full length."""
        longest = self._mixture.window_seconds
        seconds = longest if self._random.random() < 0.35 else self._random.uniform(4, longest)
        count = max(1, round(self._mixture.frames / (seconds * 50)))
        chosen = [self._random.randrange(len(self._corpus)) for _ in range(count)]
        return [self._takes.window(i, seconds) for i in chosen]

    def _next_group(self) -> list:
        if not self._queue:
            self._queue = self._groups()
        return self._queue.pop()

    def _groups(self) -> list:
        """All utterances once, those of like length together, in random order."""
        chosen = np.nonzero(self._lengths < self._mixture.longest * audio.SAMPLE_RATE)[0]
        order = chosen[np.argsort(self._lengths[chosen] + self._numpy.uniform(-5000, 5000, len(chosen)))]
        groups, group, longest = [], [], 0
        for i in order:
            length = int(self._lengths[i]) // audio.FRAME + 40
            if group and max(longest, length) * (len(group) + 1) > self._mixture.frames:
                groups.append(group)
                group, longest = [], 0
            group.append(int(i))
            longest = max(longest, length)
        groups.append(group)
        self._numpy.shuffle(groups)
        return groups

    def _example(self, take, prompted: bool) -> tuple:
        rng = self._random
        if rng.random() < self._mixture.silence:
            longest = max(1.0, len(take.samples) / audio.SAMPLE_RATE)
            samples = audio.without_speech(self._numpy, longest)
            language = rng.choice(list(tokens.LANGUAGE_TOKENS.values()))
            text, detected, letters = [], tokens.NO_SPEECH, []
        else:
            samples = audio.roughened(take.samples, self._numpy)
            language, text, detected = self._written(take)
            letters = [self._letter[c] for c in re.sub(r"[.,?!]", "", take.spoken.lower()) if c in self._letter]
            detected = detected if text else tokens.NO_SPEECH
        text = self._vocabulary.encode(text) if text else [tokens.EMPTY]
        prompt = self._context(take, prompted)
        prompt = [tokens.PREVIOUS] + prompt[-223:] if prompt else []
        head = [tokens.START, language, tokens.TRANSCRIBE, tokens.NO_TIMESTAMPS]
        text = text[: 448 - len(prompt) - len(head) - 1]
        inputs = prompt + head + text
        labels = [IGNORED] * len(prompt) + [detected] + head[2:] + text + [tokens.END]
        rows = [self._row[token] for token in inputs]
        return samples, rows, [self._row.get(token, IGNORED) for token in labels], letters

    def _written(self, take) -> tuple:
        """The language asked for, what is to be written then, and the language that is heard."""
        chance = self._random.random()
        heard = tokens.LANGUAGE_TOKENS[take.kind]
        if take.kind == "en" or not take.written:
            others = [token for token in tokens.LANGUAGE_TOKENS.values() if token != heard]
            return (heard if chance < 0.92 else self._random.choice(others)), take.text, heard
        other = "nn" if take.kind == "no" else "no"
        if take.written["no"] == take.written["nn"]:
            heard = tokens.NORWEGIAN
        if chance < 0.82:
            return tokens.LANGUAGE_TOKENS[take.kind], take.text, heard
        if chance < 0.95:
            return tokens.LANGUAGE_TOKENS[other], take.written[other], heard
        return tokens.ENGLISH, take.text, heard

    def _context(self, take, prompted: bool) -> list:
        """What the decoder is given before the take: a vocabulary, and the text of the windows before."""
        prompt = self._prompt(take) if prompted and self._random.random() < 0.8 else []
        if take.history and self._random.random() < 0.6:
            prompt = prompt + self._vocabulary.encode(take.history)
        return prompt

    def _prompt(self, take) -> list:
        """A vocabulary or an earlier text; now and then it holds words of the take itself."""
        rng, language = self._random, "en" if take.kind == "en" else "no"
        words = []
        for _ in range(1 if rng.random() < 0.6 else rng.randint(2, 5)):
            words += rng.choice(self._corpus.entries)["spoken"].split()
        if rng.random() < 0.6:
            rng.shuffle(words)
            words = words[: rng.randint(1, 10)] + [invented_word(rng, language) for _ in range(rng.randint(0, 5))]
            if rng.random() < 0.5 and take.spoken:
                words += rng.sample(take.spoken.split(), min(len(take.spoken.split()), rng.randint(1, 3)))
            rng.shuffle(words)
            words = [word.strip(".,?!") for word in words]
            words = [word.capitalize() if rng.random() < 0.4 else word for word in words]
            text = rng.choice([", ", ", ", " ", ". "]).join(words) + rng.choice(["", "."])
        else:
            text = " ".join(words)
        return self._vocabulary.encode_prompt(rng.choice(["", " "]) + text)[-rng.randint(20, 200):]

    def _assemble(self, examples: list) -> Batch:
        first, lead = 0, 0
        longest = max(len(example[0]) for example in examples)
        room = audio.WINDOW_FRAMES - longest // audio.FRAME - 2 * EDGE - _LEAD // audio.FRAME
        if room > 0 and self._random.random() < self._mixture.late:
            first, lead = self._random.randrange(min(room, _LATEST)), _LEAD
        length = min((longest + lead) // audio.FRAME + EDGE, audio.WINDOW_FRAMES)
        samples = torch.zeros(len(examples), longest + lead)
        for row, example in zip(samples, examples):
            row[lead : lead + len(example[0])] = torch.from_numpy(example[0])
        extra = EDGE if first + length < audio.WINDOW_FRAMES else 0
        mel = self._masked(log_mel(samples, 2 * (length + extra)))
        width = max(len(example[1]) for example in examples)
        inputs = torch.full((len(examples), width), self._row[tokens.END])
        labels = torch.full((len(examples), width), IGNORED)
        for i, (_, example_inputs, example_labels, _) in enumerate(examples):
            inputs[i, : len(example_inputs)] = torch.tensor(example_inputs)
            labels[i, : len(example_labels)] = torch.tensor(example_labels)
        letters = [example[3] for example in examples] if length < _LONGEST_SPELLED else []
        return Batch(mel, length, first, inputs, labels, letters)

    def _masked(self, mel):
        """Hides a band or a moment, so that no single cue is relied on."""
        rng = self._random
        for row in mel:
            if rng.random() < 0.4:
                width = rng.randint(2, 10)
                start = rng.randint(0, audio.MELS - width)
                row[:, start : start + width] = row.mean()
            if rng.random() < 0.3:
                width = rng.randint(2, 12)
                start = rng.randint(0, max(1, row.shape[0] - width))
                row[start : start + width] = row.mean()
        return mel
