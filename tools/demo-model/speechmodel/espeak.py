"""Speech synthesis through espeak-ng's shared library, with the time of every word.

The library is driven directly instead of through its program for one reason: it reports where each word
begins, and without word times a recording can't be cut in the middle of a sentence and still be labelled.

One synthesiser per process: the library keeps global state.
"""
import ctypes
from dataclasses import dataclass

import numpy as np
from scipy.signal import resample_poly

from .audio import SAMPLE_RATE

_ESPEAK_RATE = 22050
_SYNCHRONOUS = 2
_EVENT_END = 0
_EVENT_WORD = 1
_UTF8 = 1
_POSITION_CHARACTER = 1
_RATE, _PITCH, _WORD_GAP = 1, 3, 7


class _EventId(ctypes.Union):
    _fields_ = [("number", ctypes.c_int), ("name", ctypes.c_char_p), ("string", ctypes.c_char * 8)]


class _Event(ctypes.Structure):
    _fields_ = [
        ("type", ctypes.c_int),
        ("unique_identifier", ctypes.c_uint),
        ("text_position", ctypes.c_int),
        ("length", ctypes.c_int),
        ("audio_position", ctypes.c_int),
        ("sample", ctypes.c_int),
        ("user_data", ctypes.c_void_p),
        ("id", _EventId),
    ]


_Callback = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.POINTER(ctypes.c_short), ctypes.c_int, ctypes.POINTER(_Event))


@dataclass(frozen=True)
class Voice:
    """How a sentence is spoken. `rate` is in words a minute, `pitch` 0-99, `gap` extra pause in 10 ms."""

    language: str
    variant: str = ""
    rate: int = 175
    pitch: int = 50
    gap: int = 0

    @property
    def name(self) -> str:
        return f"{self.language}+{self.variant}" if self.variant else self.language


@dataclass(frozen=True)
class Utterance:
    """`samples` are int16 at 16 kHz; `words` are (index of the first character, start sample)."""

    samples: np.ndarray
    words: list


class Synthesiser:
    def __init__(self):
        self._library = ctypes.CDLL("libespeak-ng.so.1")
        if self._library.espeak_Initialize(_SYNCHRONOUS, 0, None, 0) != _ESPEAK_RATE:
            raise RuntimeError("espeak-ng did not start at 22,050 Hz")
        self._pieces = []
        self._words = []
        self._callback = _Callback(self._receive)  # kept here: the library holds no reference
        self._library.espeak_SetSynthCallback(self._callback)

    def _receive(self, samples, count, events):
        if samples and count > 0:
            self._pieces.append(np.ctypeslib.as_array(samples, (count,)).copy())
        i = 0
        while events[i].type != _EVENT_END:
            if events[i].type == _EVENT_WORD:
                self._words.append((events[i].text_position - 1, events[i].audio_position))
            i += 1
        return 0

    def speak(self, text: str, voice: Voice) -> Utterance:
        self._pieces, self._words = [], []
        library = self._library
        if library.espeak_SetVoiceByName(voice.name.encode()) != 0:
            raise ValueError(f"espeak-ng has no voice {voice.name}")
        for parameter, value in ((_RATE, voice.rate), (_PITCH, voice.pitch), (_WORD_GAP, voice.gap)):
            library.espeak_SetParameter(parameter, value, 0)
        data = text.encode() + b"\0"
        status = library.espeak_Synth(data, ctypes.c_size_t(len(data)), 0, _POSITION_CHARACTER, 0, _UTF8, None, None)
        if status != 0:
            raise RuntimeError(f"espeak-ng could not speak: status {status}")
        library.espeak_Synchronize()
        samples = np.concatenate(self._pieces) if self._pieces else np.zeros(0, np.int16)
        resampled = resample_poly(samples.astype(np.float32), 320, 441)
        words = [(max(position, 0), milliseconds * SAMPLE_RATE // 1000) for position, milliseconds in self._words]
        return Utterance(np.clip(np.round(resampled), -32768, 32767).astype(np.int16), words)
