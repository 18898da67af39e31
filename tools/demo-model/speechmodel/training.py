"""The training loop: two processes that share the gradient, AdamW, a schedule in steps.

Two processes of one thread each are faster than one process of two, and stay so on a busy machine. Both take
the same step with the mean of their gradients, so their parameters never drift apart. Nothing depends on
the time of day: the same seed and the same number of steps give the same model on the same machine.
"""
import math
import multiprocessing
import os
import time
from dataclasses import dataclass
from pathlib import Path

import numpy as np
import torch
import torch.nn.functional as F

from .batches import IGNORED
from .network import PADDED_KEYS, SpeechNetwork

SAVE_EVERY = 250
_DECAY = 0.02
_LOG_EVERY = 50
_AVERAGE_EVERY = 4


@dataclass(frozen=True)
class Schedule:
    """The rate rises for `warmup` steps, stays, and falls to nothing over the last `fall` steps. A run may stop before
    that, after `stop` steps."""

    steps: int
    rate: float
    warmup: int
    fall: int
    stop: int | None = None

    @property
    def taken(self) -> int:
        return min(self.steps, self.stop or self.steps)

    def at(self, step: int) -> float:
        rising = min(1.0, (step + 1) / max(1, self.warmup))
        falling = min(1.0, (self.steps - step) / max(1, self.fall))
        return self.rate * rising * falling


class FlatParameters:
    """All parameters and gradients of a network as one vector each, which makes the optimiser a few lines."""

    def __init__(self, network):
        named = list(network.named_parameters())
        size = sum(parameter.numel() for _, parameter in named)
        self.values, self.gradient, self.decay = torch.empty(size), torch.zeros(size), torch.zeros(size)
        self._places, start = {}, 0
        self.matrices = []  # (place, rows) of the weights whose steps are made orthogonal
        for name, parameter in named:
            place = slice(start, start + parameter.numel())
            self.values[place] = parameter.data.reshape(-1)
            parameter.data = self.values[place].view_as(parameter)
            parameter.grad = self.gradient[place].view_as(parameter)
            self.decay[place] = _DECAY if parameter.dim() >= 2 and "embedding" not in name else 0.0
            self._places[name] = (place, parameter.shape)
            if parameter.dim() >= 2 and ".blocks." in name:
                self.matrices.append((place, parameter.shape[0]))
            start = place.stop

    def named(self, values) -> dict:
        return {name: values[place].view(shape).clone() for name, (place, shape) in self._places.items()}


def orthogonal(matrices):
    """The nearest matrices with singular values near 1, for a stack of matrices that are no taller than wide.

    Five rounds of the polynomial 3.4445 x - 4.775 x^3 + 2.0315 x^5 applied to the singular values: it brings all
    of them into 0.7..1.2 and needs products only."""
    x = (matrices / (matrices.norm(dim=(1, 2), keepdim=True) + 1e-7)).bfloat16()
    for _ in range(5):
        square = x @ x.transpose(1, 2)
        x = 3.4445 * x + (-4.775 * square + 2.0315 * square @ square) @ x
    return x.float()


class Optimiser:
    """AdamW, but for the weight matrices of the blocks, whose averaged gradient is made orthogonal: each direction
    of such a matrix then learns equally fast, which takes fewer steps than AdamW alone (README.md has figures).

    The processes share that work: each makes its share of the matrices orthogonal and reads the others'."""

    def __init__(self, flat: FlatParameters, rank: int, shared, barrier):
        self._flat, self._step = flat, 0
        self._rank, self._shared, self._barrier = rank, shared, barrier
        self._mean, self._square = torch.zeros_like(flat.values), torch.zeros_like(flat.values)
        self._root = torch.empty_like(flat.values)
        self._stacks = self._stacked(flat.matrices)
        self.average = flat.values.clone()  # of the parameters over the last steps: what is exported

    @staticmethod
    def _stacked(matrices) -> list:
        """Matrices of the same size together, tall ones turned: (rows, columns) to (place, is turned)."""
        stacks = {}
        for place, rows in matrices:
            columns = (place.stop - place.start) // rows
            stacks.setdefault((min(rows, columns), max(rows, columns)), []).append((place, rows > columns))
        return sorted(stacks.items())

    def _orthogonal_steps(self, gradient):
        """Puts into `shared` this process's share of the steps; the mean of a step is 0.2, like that of AdamW."""
        for number, ((rows, columns), members) in enumerate(self._stacks):
            if number % self._barrier.parties != self._rank:
                continue
            looked_ahead = torch.stack([
                (0.1 * gradient[place] + 0.9 * self._mean[place]).view(columns, rows).t() if turned
                else (0.1 * gradient[place] + 0.9 * self._mean[place]).view(rows, columns)
                for place, turned in members])
            steps = orthogonal(looked_ahead).mul_(0.2 * columns**0.5)
            for (place, turned), step in zip(members, steps):
                self._shared[place] = (step.t() if turned else step).reshape(-1)

    def step(self, gradient, rate: float) -> float:
        """In place throughout: with so small a network the optimiser's passes over memory are a sixth of a step."""
        norm = float(gradient.norm())
        if not math.isfinite(norm):
            return norm
        if norm > 1:
            gradient.mul_(1 / norm)
        self._step += 1
        self._mean.lerp_(gradient, 0.1)
        self._square.mul_(0.98).addcmul_(gradient, gradient, value=0.02)
        self._orthogonal_steps(gradient)
        root = torch.sqrt(self._square, out=self._root).mul_((1 - 0.98**self._step) ** -0.5).add_(1e-8)
        step = torch.div(self._mean, root, out=root).mul_(1 / (1 - 0.9**self._step))
        self._barrier.wait()
        for place, _ in self._flat.matrices:
            step[place] = self._shared[place]
        values = self._flat.values
        values.addcmul_(values, self._flat.decay, value=-rate)
        values.add_(step, alpha=-rate)
        if self._step % _AVERAGE_EVERY == 0:
            keep = min(0.998, 1 - 1 / (self._step / 8 + 1)) ** _AVERAGE_EVERY
            self.average.lerp_(values, 1 - keep)
        return norm


def spelling_loss(letters, batch):
    """How badly the encoder's frames spell what was said: helps the decoder to find its place early on."""
    counts = torch.tensor([len(text) for text in batch.letters])
    targets = torch.tensor([letter for text in batch.letters for letter in text], dtype=torch.long)
    spoken = letters.float().log_softmax(-1).transpose(0, 1)
    lengths = torch.full((len(counts),), spoken.shape[0])
    loss = F.ctc_loss(spoken, targets, lengths, counts, zero_infinity=True, reduction="none")
    return (loss / (counts + batch.length * 0.2)).mean()


def losses(network, batch, frames_sampled: int, zeros: float, guesses: float, letter_weight: float) -> tuple:
    """The loss to be made small, and the share of right tokens. `guesses` is the share of wrong input words."""
    rows = network.decoder.token_embedding.num_embeddings
    wrong = (torch.rand(batch.inputs.shape) < guesses) & (batch.labels != IGNORED) & (batch.inputs < rows - 11)
    inputs = torch.where(wrong, torch.randint(256, rows - 11, batch.inputs.shape), batch.inputs)
    with torch.autocast("cpu", dtype=torch.bfloat16):
        frames, weights = network.encoder(batch.mel, batch.length, batch.first, frames_sampled, zeros)
        letters = network.letters(frames[:, : batch.length])
        scores = network.decoder(inputs, frames, weights, zeros).float()
    flat, labels = scores.flatten(0, 1), batch.labels.flatten()
    loss = F.cross_entropy(flat, labels, ignore_index=IGNORED, label_smoothing=0.02)
    spelling = spelling_loss(letters, batch) if batch.letters and letter_weight > 0 else torch.zeros(())
    judged = labels != IGNORED
    right = ((flat.argmax(-1) == labels) & judged).sum() / judged.sum()
    return loss + letter_weight * spelling, loss.item(), spelling.item(), right.item()


@dataclass
class Run:
    """One training run. `extra` is stored in every checkpoint beside the parameters."""

    network: SpeechNetwork
    make_batches: object  # called with the process number
    schedule: Schedule
    output: Path
    extra: dict
    seed: int
    frames_sampled: int = 8
    letter_weight: float = 0.3


def _save(run: Run, flat: FlatParameters, optimiser: Optimiser, step: int):
    state = dict(run.extra, average=flat.named(optimiser.average), last=flat.named(flat.values), step=step)
    unfinished = run.output.with_suffix(".part")
    torch.save(state, unfinished)
    os.replace(unfinished, run.output)


def _process(rank: int, run: Run, shared, steps, barrier):
    torch.manual_seed(run.seed + 1000 * rank)
    chance = np.random.default_rng(run.seed + 1000 * rank)
    flat = FlatParameters(run.network)
    optimiser, batches = Optimiser(flat, rank, steps, barrier), run.make_batches(rank)
    mean = torch.empty_like(flat.values)
    started, sums = time.time(), np.zeros(3)
    for step in range(run.schedule.taken):
        zeros = PADDED_KEYS if chance.random() < 0.85 else 0.0
        flat.gradient.zero_()
        total, *figures = losses(run.network, batches.next(), run.frames_sampled, zeros, 0.06, run.letter_weight)
        total.backward()
        shared[rank].copy_(flat.gradient)
        barrier.wait()
        gradient = torch.sum(shared, 0, out=mean).div_(len(shared))
        barrier.wait()
        norm = optimiser.step(gradient, run.schedule.at(step))
        sums += figures
        if rank == 0 and (step + 1) % _LOG_EVERY == 0:
            loss, spelling, right = sums / _LOG_EVERY
            seconds = (time.time() - started) / (step + 1)
            print(f"{step + 1} {seconds:.3f} s/step loss {loss:.3f} letters {spelling:.3f} right {right:.4f} "
                  f"gradient {norm:.2f} rate {run.schedule.at(step):.5f}", flush=True)
            sums[:] = 0
        if rank == 0 and ((step + 1) % SAVE_EVERY == 0 or step + 1 == run.schedule.taken):
            _save(run, flat, optimiser, step + 1)


def train(run: Run, processes: int = 2):
    torch.set_num_threads(1)
    size = sum(parameter.numel() for parameter in run.network.parameters())
    shared = torch.zeros(processes, size).share_memory_()
    steps = torch.zeros(size).share_memory_()
    fork = multiprocessing.get_context("fork")
    barrier = fork.Barrier(processes)
    helpers = [fork.Process(target=_process, args=(rank, run, shared, steps, barrier)) for rank in range(1, processes)]
    for helper in helpers:
        helper.start()
    _process(0, run, shared, steps, barrier)
    for helper in helpers:
        helper.join()
