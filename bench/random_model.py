#!/usr/bin/env python3
"""A speech model of a real one's shape with random weights, which writes forty-three words and ends whatever it hears: the
time that a model of that shape takes, without its gigabytes of download.

    bench/random_model.py DEMO_MODEL tiny|medium|large FILE     the words come from DEMO_MODEL; needs numpy
"""
import struct
import sys

import numpy as np

# State, heads, layers, mel bands, vocabulary.
SHAPES = {"tiny": (384, 6, 4, 80, 51865), "medium": (1024, 16, 24, 80, 51865), "large": (1280, 20, 32, 128, 51866)}
MAGIC = 0x67676D6C
END_OF_TEXT = 50257
WORDS = 43
POSITIONS = 448
BINS = 201


def words_of(path):
    """The vocabulary that a model file holds."""
    with open(path, "rb") as file:
        file.read(48)
        mels, bins = struct.unpack("<2i", file.read(8))
        file.read(4 * mels * bins)
        count, = struct.unpack("<i", file.read(4))
        return [file.read(struct.unpack("<I", file.read(4))[0]) for _ in range(count)]


class Writer:
    def __init__(self, file, state):
        self.file = file
        self.state = state
        self.random = np.random.default_rng(1)
        self.pool = (self.random.standard_normal(1 << 24) * 0.02).astype(np.float16)

    def put(self, name, data):
        extents = data.shape[::-1]
        text = name.encode()
        kind = 1 if data.dtype == np.float16 else 0
        self.file.write(struct.pack("<3i", len(extents), len(text), kind))
        self.file.write(struct.pack(f"<{len(extents)}i", *extents) + text + data.tobytes())

    def noise(self, name, *extents):
        size = int(np.prod(extents))
        start = int(self.random.integers(0, 1 << 20))
        self.put(name, np.resize(self.pool[start:], size).reshape(extents))

    def zeros(self, name, *extents):
        self.put(name, np.zeros(extents, np.float32))

    def norm(self, name):
        self.put(name + ".weight", np.ones(self.state, np.float32))
        self.zeros(name + ".bias", self.state)

    def attention(self, name):
        for part in ("query", "key", "value", "out"):
            self.noise(f"{name}.{part}.weight", self.state, self.state)
            if part != "key":
                self.zeros(f"{name}.{part}.bias", self.state)

    def block(self, name, parts):
        for part in parts:
            self.norm(f"{name}.{part}_ln")
            self.attention(f"{name}.{part}")
        self.norm(name + ".mlp_ln")
        self.noise(name + ".mlp.0.weight", 4 * self.state, self.state)
        self.zeros(name + ".mlp.0.bias", 4 * self.state)
        self.noise(name + ".mlp.2.weight", self.state, 4 * self.state)
        self.zeros(name + ".mlp.2.bias", self.state)

    def encoder(self, layers, mels):
        positions = self.random.standard_normal((1500, self.state)) * 0.1
        self.put("encoder.positional_embedding", positions.astype(np.float32))
        self.noise("encoder.conv1.weight", self.state, mels, 3)
        self.zeros("encoder.conv1.bias", self.state, 1)
        self.noise("encoder.conv2.weight", self.state, self.state, 3)
        self.zeros("encoder.conv2.bias", self.state, 1)
        self.norm("encoder.ln_post")
        for layer in range(layers):
            self.block(f"encoder.blocks.{layer}", ("attn",))

    def decoder(self, layers, vocabulary, words):
        """Each position is so near to one word that everything else is lost beside it."""
        embedding = self.random.standard_normal((vocabulary, self.state)) / np.sqrt(self.state)
        plain = [number for number, word in enumerate(words[:END_OF_TEXT])
                 if len(word) > 2 and word[:1] == b" " and word[1:].isalpha()]
        chosen = [plain[7 * place % len(plain)] if place < WORDS else END_OF_TEXT for place in range(POSITIONS)]
        self.put("decoder.positional_embedding", (300 * embedding[chosen]).astype(np.float32))
        self.put("decoder.token_embedding.weight", embedding.astype(np.float16))
        self.norm("decoder.ln")
        for layer in range(layers):
            self.block(f"decoder.blocks.{layer}", ("attn", "cross_attn"))


def write_model(demo, shape, path):
    state, heads, layers, mels, vocabulary = SHAPES[shape]
    words = words_of(demo)
    with open(path, "wb") as file:
        file.write(struct.pack("<I11i", MAGIC, vocabulary, 1500, state, heads, layers, POSITIONS, state, heads, layers,
                               mels, 1))
        filters = np.zeros((mels, BINS), np.float32)
        for band in range(mels):
            centre = int(2 + band * 196 / mels)
            filters[band, centre:centre + 3] = (0.01, 0.02, 0.01)
        file.write(struct.pack("<2i", mels, BINS) + filters.tobytes() + struct.pack("<i", len(words)))
        for word in words:
            file.write(struct.pack("<I", len(word)) + word)
        writer = Writer(file, state)
        writer.encoder(layers, mels)
        writer.decoder(layers, vocabulary, words)


if __name__ == "__main__":
    if len(sys.argv) != 4 or sys.argv[2] not in SHAPES:
        sys.exit(__doc__)
    write_model(*sys.argv[1:4])
