"""Runs whisper.cpp over many pieces of sound in one process."""
import subprocess
from dataclasses import dataclass
from pathlib import Path


@dataclass(frozen=True)
class Answer:
    milliseconds: float
    language: str
    segments: int
    text: str


def request(item: dict, language: str, prompt: str = "") -> str:
    clean = " ".join(prompt.split())
    return f"{language}\t{clean}\t{item['offset']}\t{item['length']}\n"


def recognise(program: Path, model: Path, base: Path, requests: list, threads: int = 2) -> tuple:
    """The load time in milliseconds and an answer to each request. `base` is a corpus without its suffix."""
    done = subprocess.run([str(program), str(model), f"{base}.pcm", str(threads)], input="".join(requests),
                          capture_output=True, text=True, check=True)
    load, *lines = done.stdout.splitlines()
    answers = []
    for line in lines:
        milliseconds, language, segments, text = line.split("\t")
        answers.append(Answer(float(milliseconds), language, int(segments), text))
    if len(answers) != len(requests):
        raise RuntimeError("the recogniser stopped early")
    return float(load), answers
