"""The network: a small Whisper encoder and decoder, with the tricks that make it cheap to train.

Speech fills only a part of the 30 s that the recogniser always looks at. The rest is padding, constant but
for its position; here a few sampled positions stand for all of them, each weighted in the attention by the
number of frames it stands for. So a sentence of 3 s costs a tenth of a window, and the exported network,
which sees all frames, computes the same up to the sampling.
"""
import math

import torch
import torch.nn.functional as F
from torch import nn

from .audio import MELS, WINDOW_FRAMES

TEXT_POSITIONS = 448
PADDED_KEYS = 36.0  # whisper.cpp pads 1,500 keys to 1,536 without a mask when flash attention is on
_EDGE = 4  # encoder frames of padding computed after the speech, so that its last frame sees real neighbours


class Attention(nn.Module):
    def __init__(self, width: int, heads: int):
        super().__init__()
        self.heads = heads
        self.query = nn.Linear(width, width)
        self.key = nn.Linear(width, width, bias=False)
        self.value = nn.Linear(width, width)
        self.out = nn.Linear(width, width)

    def _split(self, x):
        return x.view(x.shape[0], x.shape[1], self.heads, -1).transpose(1, 2)

    def forward(self, x, source, bias, zeros=0.0):
        """`bias` is added to the scores; `zeros` is the number of zero keys that join the softmax."""
        query, key, value = self._split(self.query(x)), self._split(self.key(source)), self._split(self.value(source))
        if zeros > 0:
            key, value = F.pad(key, (0, 0, 0, 1)), F.pad(value, (0, 0, 0, 1))
            bias = torch.cat([bias, torch.tensor([math.log(zeros)])])
        scores = torch.matmul(query * query.shape[-1] ** -0.5, key.transpose(-1, -2)) + bias.to(query.dtype)
        mixed = torch.matmul(scores.softmax(-1), value)
        return self.out(mixed.transpose(1, 2).reshape(x.shape))


class Block(nn.Module):
    def __init__(self, width: int, heads: int, cross: bool):
        super().__init__()
        self.attn, self.attn_ln = Attention(width, heads), nn.LayerNorm(width)
        if cross:
            self.cross_attn, self.cross_attn_ln = Attention(width, heads), nn.LayerNorm(width)
        self.mlp = nn.Sequential(nn.Linear(width, 4 * width), nn.GELU(), nn.Linear(4 * width, width))
        self.mlp_ln = nn.LayerNorm(width)

    def attend(self, x, bias, zeros=0.0):
        normal = self.attn_ln(x)
        return x + self.attn(normal, normal, bias, zeros)

    def attend_across(self, x, source, bias, zeros):
        return x + self.cross_attn(self.cross_attn_ln(x), source, bias, zeros)

    def feed_forward(self, x):
        return x + self.mlp(self.mlp_ln(x))


def sinusoids(count: int, width: int):
    step = math.log(10000) / (width // 2 - 1)
    angle = torch.arange(count)[:, None] * torch.exp(-step * torch.arange(width // 2))[None]
    return torch.cat([angle.sin(), angle.cos()], 1)


def convolved(x, convolution, stride: int):
    """A convolution of three frames as one matrix product: PyTorch 1.13's bfloat16 convolution has wrong gradients."""
    count = x.shape[1] // stride
    padded = F.pad(x, (0, 0, 1, 1))
    taps = torch.cat([padded[:, k : k + x.shape[1] : stride][:, :count] for k in range(3)], -1)
    weight = convolution.weight.permute(0, 2, 1).reshape(convolution.weight.shape[0], -1)
    return F.gelu(F.linear(taps, weight, convolution.bias))


class Encoder(nn.Module):
    def __init__(self, width: int, heads: int, layers: int):
        super().__init__()
        self.conv1 = nn.Conv1d(MELS, width, 3, padding=1)
        self.conv2 = nn.Conv1d(width, width, 3, stride=2, padding=1)
        self.positional_embedding = nn.Parameter(sinusoids(WINDOW_FRAMES, width))
        self.blocks = nn.ModuleList(Block(width, heads, False) for _ in range(layers))
        self.ln_post = nn.LayerNorm(width)

    def forward(self, mel, length: int, first: int, samples: int, zeros: float):
        """`mel` (batch, mel frames, 80) holds `length` encoder frames of speech and then `_EDGE` of padding.

        The speech stands at position `first` of the window. Returns the frames (speech first, then those that
        stand for padding) and the weight of each in an attention, as a logarithm."""
        x = convolved(convolved(mel, self.conv1, 1), self.conv2, 2)
        last = min(first + length, WINDOW_FRAMES)
        frames = [x[:, : last - first] + self.positional_embedding[first:last]]
        weights = [torch.zeros(last - first)]
        padding = x[:, min(length + 1, x.shape[1] - 1)][:, None]
        for begin, end in ((0, first), (last, WINDOW_FRAMES)):
            if end > begin:
                positions = sampled_positions(begin, end, samples)
                frames.append(padding + self.positional_embedding[positions])
                weights.append(torch.full((len(positions),), math.log((end - begin) / len(positions))))
        x, weights = torch.cat(frames, 1), torch.cat(weights)
        for block in self.blocks:
            x = block.feed_forward(block.attend(x, weights, zeros))
        return self.ln_post(x), weights


def sampled_positions(begin: int, end: int, samples: int):
    if end - begin <= samples:
        return torch.arange(begin, end)
    edges = torch.linspace(begin, end, samples + 1)
    return (edges[:-1] + torch.rand(samples) * (edges[1:] - edges[:-1])).long().clamp(max=end - 1)


class Decoder(nn.Module):
    def __init__(self, width: int, heads: int, layers: int, rows: int):
        super().__init__()
        self.token_embedding = nn.Embedding(rows, width)
        nn.init.normal_(self.token_embedding.weight, std=0.04)
        self.positional_embedding = nn.Parameter(sinusoids(TEXT_POSITIONS, width) * 0.05)
        self.blocks = nn.ModuleList(Block(width, heads, True) for _ in range(layers))
        self.ln = nn.LayerNorm(width)
        # Dimension 0 of the last norm is held at 1, so that column 0 of the table is a bias for each token.
        # The rows that are never trained get a bias of -30 in the exported file and stay out of the softmax.
        kept = torch.ones(width)
        kept[0] = 0
        self.register_buffer("kept", kept, persistent=False)

    def forward(self, tokens, frames, weights, zeros: float):
        count = tokens.shape[1]
        x = self.token_embedding(tokens) + self.positional_embedding[:count]
        future = torch.full((count, count), -1e9).triu(1)
        for block in self.blocks:
            x = block.attend(x, future)
            x = block.feed_forward(block.attend_across(x, frames, weights, zeros))
        return F.linear(self.ln(x) * self.kept + (1 - self.kept), self.token_embedding.weight)


class SpeechNetwork(nn.Module):
    """`shape` has width, heads, encoder_layers and decoder_layers. The letter head helps training only."""

    def __init__(self, shape: dict, rows: int, letters: int):
        super().__init__()
        width, heads = shape["width"], shape["heads"]
        self.encoder = Encoder(width, heads, shape["encoder_layers"])
        self.decoder = Decoder(width, heads, shape["decoder_layers"], rows)
        self.letters = nn.Linear(width, letters)
        self._initialise()

    def _initialise(self):
        for name, parameter in self.named_parameters():
            if name.endswith(".weight") and parameter.dim() == 2 and "token" not in name:
                nn.init.normal_(parameter, std=0.7 * parameter.shape[1] ** -0.5)
            if name.endswith("bias"):
                nn.init.zeros_(parameter)
        for block in list(self.encoder.blocks) + list(self.decoder.blocks):
            attentions = [block.attn] + ([block.cross_attn] if hasattr(block, "cross_attn") else [])
            for layer in [attention.out for attention in attentions] + [block.mlp[2]]:
                layer.weight.data.mul_(0.5)
