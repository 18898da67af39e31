"""Reading and writing whisper.cpp's model file: header, mel filters, vocabulary, tensors; nothing else."""
import struct
from pathlib import Path

import numpy as np

from .audio import WINDOW_FRAMES, MELS, mel_filters
from .tokens import TABLE_SIZE, TEXT_TOKENS

_MAGIC = 0x67676D6C
_TEXT_POSITIONS = 448
UNUSED_ROW_BIAS = -30.0  # e to the -30: fifty thousand such rows do not show in a softmax


def header(shape: dict) -> list:
    width, heads = shape["width"], shape["heads"]
    encoder = [WINDOW_FRAMES, width, heads, shape["encoder_layers"]]
    decoder = [_TEXT_POSITIONS, width, heads, shape["decoder_layers"]]
    return [TABLE_SIZE] + encoder + decoder + [MELS, 1]


def file_tensors(state: dict, rows: list) -> dict:
    """The trained arrays in the form the file wants, by name."""
    tensors = {}
    for name, value in state.items():
        if name.startswith("letters"):
            continue
        value = np.asarray(value, np.float32)
        if name.endswith("positional_embedding"):
            value = value.astype(np.float16).astype(np.float32)  # packs better; nothing is lost that is heard
        elif name == "decoder.token_embedding.weight":
            table = np.zeros((TABLE_SIZE, value.shape[1]), np.float32)
            table[:, 0] = UNUSED_ROW_BIAS
            table[rows] = value
            value = table
        elif name.startswith("decoder.ln."):
            value = value.copy()
            value[0] = 1.0 if name.endswith("bias") else 0.0
        elif name in ("encoder.conv1.bias", "encoder.conv2.bias"):
            value = value.reshape(-1, 1)
        tensors[name] = np.ascontiguousarray(value)
    return tensors


def _is_half(name: str, value: np.ndarray) -> bool:
    return value.ndim >= 2 and not name.endswith("bias") and "positional" not in name


def write(path: Path, shape: dict, tokens: list, tensors: dict):
    with open(path, "wb") as file:
        file.write(struct.pack("<i11i", _MAGIC, *header(shape)))
        filters = mel_filters()
        file.write(struct.pack("<2i", *filters.shape) + filters.tobytes())
        file.write(struct.pack("<i", TEXT_TOKENS))
        for i in range(TEXT_TOKENS):
            token = tokens[i] if i < len(tokens) else b""
            file.write(struct.pack("<i", len(token)) + token)
        for name, value in tensors.items():
            half = _is_half(name, value)
            file.write(struct.pack("<3i", value.ndim, len(name.encode()), int(half)))
            file.write(struct.pack(f"<{value.ndim}i", *reversed(value.shape)) + name.encode())
            file.write(value.astype(np.float16 if half else np.float32).tobytes())


class _Reader:
    def __init__(self, data: bytes):
        self._data, self._at = data, 0

    def integers(self, count: int) -> tuple:
        return struct.unpack(f"<{count}i", self.bytes(4 * count))

    def bytes(self, count: int) -> bytes:
        piece = self._data[self._at : self._at + count]
        if len(piece) != count:
            raise ValueError("the file ends too early")
        self._at += count
        return piece

    @property
    def at_end(self) -> bool:
        return self._at == len(self._data)


def read(data: bytes) -> tuple:
    """The header's eleven numbers, the tokens and the tensors (as float32) of an f16 file."""
    reader = _Reader(data)
    if reader.integers(1)[0] != _MAGIC:
        raise ValueError("not a ggml model file")
    numbers = reader.integers(11)
    count, length = reader.integers(2)
    reader.bytes(4 * count * length)
    tokens = [reader.bytes(reader.integers(1)[0]) for _ in range(reader.integers(1)[0])]
    tensors = {}
    while not reader.at_end:
        dimensions, length, kind = reader.integers(3)
        shape = tuple(reversed(reader.integers(dimensions)))
        name = reader.bytes(length).decode()
        if kind not in (0, 1):
            raise ValueError(f"{name} is quantised")
        size = int(np.prod(shape))
        raw = np.frombuffer(reader.bytes(size * (2 if kind else 4)), np.float16 if kind else np.float32)
        tensors[name] = raw.astype(np.float32).reshape(shape)
    return numbers, tokens, tensors
