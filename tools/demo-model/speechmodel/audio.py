"""Sound as the model hears it: log-mel frames as whisper.cpp computes them, and everything that is not speech."""
import math

import numpy as np
from scipy.signal import lfilter

SAMPLE_RATE = 16000
FFT_SIZE = 400
HOP = 160
MELS = 80
FRAME = 320  # samples of one encoder frame
WINDOW_FRAMES = 1500  # encoder frames of the 30 s window


def _hz_to_mel(hz):
    hz = np.asarray(hz, np.float64)
    return np.where(hz >= 1000, 15 + np.log(np.maximum(hz, 1e-9) / 1000) / (np.log(6.4) / 27), hz * 3 / 200)


def _mel_to_hz(mel):
    mel = np.asarray(mel, np.float64)
    return np.where(mel >= 15, 1000 * np.exp((np.log(6.4) / 27) * (mel - 15)), mel * 200 / 3)


def mel_filters() -> np.ndarray:
    """80 triangles over 201 frequencies, equally spaced in mel, each of the same area."""
    bins = np.linspace(0, SAMPLE_RATE / 2, FFT_SIZE // 2 + 1)
    edges = _mel_to_hz(np.linspace(0, _hz_to_mel(SAMPLE_RATE / 2), MELS + 2))
    widths = np.diff(edges)
    distance = edges[:, None] - bins[None]
    rising, falling = -distance[:-2] / widths[:-1, None], distance[2:] / widths[1:, None]
    area = 2.0 / (edges[2:] - edges[:-2])
    return (np.maximum(0, np.minimum(rising, falling)) * area[:, None]).astype(np.float32)


def fourier_matrix() -> np.ndarray:
    """Windowed DFT as one matrix: 400 samples to 201 real and 201 imaginary parts."""
    n, k = np.arange(FFT_SIZE), np.arange(FFT_SIZE // 2 + 1)
    hann = 0.5 * (1 - np.cos(2 * math.pi * n / FFT_SIZE))
    angle = 2 * math.pi * n[:, None] * k / FFT_SIZE
    parts = [hann[:, None] * np.cos(angle), -hann[:, None] * np.sin(angle)]
    return np.concatenate(parts, 1).astype(np.float32)


def _tone(rng, time, low=60.0, high=4000.0):
    frequency = math.exp(rng.uniform(math.log(low), math.log(high)))
    return np.sin(2 * np.pi * frequency * time + rng.uniform(0, 6))


def tones(count: int, rng) -> np.ndarray:
    """Steady tones, chords, square waves, sweeps and beeps, of peak about 1."""
    time = np.arange(count) / SAMPLE_RATE
    kind = rng.integers(5)
    if kind == 0:
        sound = _tone(rng, time)
    elif kind == 1:
        sound = sum(_tone(rng, time) for _ in range(rng.integers(2, 5)))
    elif kind == 2:
        sound = np.sign(_tone(rng, time, 60, 1000))
    elif kind == 3:
        low, high = sorted(rng.uniform(80, 3500, 2))
        sound = np.sin(2 * np.pi * (low * time + (high - low) * time**2 / (2 * time[-1] + 1e-9)))
    else:
        period = rng.uniform(0.15, 1.2)
        sound = _tone(rng, time, 200, 3000) * ((time % period) < period * rng.uniform(0.2, 0.8))
    return (sound / (np.abs(sound).max() + 1e-6)).astype(np.float32)


def noise(count: int, rng) -> np.ndarray:
    """White noise, rumble or hum, of power about 1."""
    white = rng.standard_normal(count).astype(np.float32)
    kind = rng.random()
    if kind < 0.4:
        return white
    if kind < 0.75:
        pole = rng.uniform(0.5, 0.97)
        sound = lfilter([1 - pole], [1, -pole], white)
    else:
        time = np.arange(count) / SAMPLE_RATE
        base = rng.uniform(45, 400)
        sound = sum(rng.uniform(0, 1) * np.sin(2 * np.pi * base * k * time + rng.uniform(0, 6)) for k in (1, 2, 3))
        sound = 0.2 * white + sound / (sound.std() + 1e-6)
    return (sound / (sound.std() + 1e-9)).astype(np.float32)


def without_speech(rng, longest: float) -> np.ndarray:
    """Digital silence, noise, hum, clicks or tones of up to `longest` seconds: nothing that is to be written."""
    count = int(rng.uniform(0.3, longest) * SAMPLE_RATE)
    kind = rng.random()
    if kind < 0.25:
        return np.zeros(count, np.float32)
    if kind < 0.55:
        sound = tones(count, rng) * 10 ** rng.uniform(-2.5, -0.1)
        if rng.random() < 0.5:
            sound = sound + noise(count, rng) * 10 ** rng.uniform(-4.5, -2.0)
    else:
        sound = noise(count, rng) * 10 ** rng.uniform(-4.5, -1.0)
        if kind < 0.65:
            sound[: int(count * rng.random())] = 0
    if kind > 0.85:
        for _ in range(rng.integers(1, 6)):
            sound[rng.integers(0, count)] += rng.uniform(-0.9, 0.9)
    return np.clip(sound, -1, 1).astype(np.float32)


def stretched(samples: np.ndarray, factor: float) -> np.ndarray:
    """Plays the sound `factor` times as fast; throat and pitch change with it, which makes new voices."""
    count = int(len(samples) / factor)
    return np.interp(np.arange(count) * factor, np.arange(len(samples)), samples).astype(np.float32)


def roughened(samples: np.ndarray, rng) -> np.ndarray:
    """Another microphone, level, background and room for the same speech; the length stays."""
    if rng.random() < 0.4:
        samples = lfilter([1, rng.uniform(-0.6, 0.6)], [1], samples).astype(np.float32)
    peak = np.abs(samples).max() + 1e-6
    samples = samples * (10 ** rng.uniform(-1.7, -0.02) / peak)
    if rng.random() < 0.5:
        ratio = rng.uniform(8, 45)
        power = math.sqrt(float((samples**2).mean()))
        samples = samples + noise(len(samples), rng) * power * 10 ** (-ratio / 20)
    if rng.random() < 0.12:
        samples = np.clip(samples, -0.5, 0.5)
    return np.clip(samples, -1, 1).astype(np.float32)
