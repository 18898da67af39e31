"""The engine alone: the sentences as sound files, and what `tulvane transcribe` makes of them."""
import json
import os
import subprocess
import sys
import tempfile
from pathlib import Path

from sentences import RECOGNISABLE, SENTENCES, share


def transcribe(program, sound, language):
    command = [program, "transcribe", sound, "--model", "demo", "--language", language, "--json"]
    run = subprocess.run(command, capture_output=True, text=True, timeout=120)
    if run.returncode != 0:
        sys.exit(f"tulvane transcribe ended with {run.returncode}: {run.stderr.strip()}")
    return json.loads(run.stdout)


def show(program):
    worst = 1.0
    with tempfile.TemporaryDirectory() as folder:
        os.environ.update(XDG_CONFIG_HOME=folder, XDG_DATA_HOME=folder)
        for number, (language, voice, said) in enumerate(SENTENCES):
            sound = Path(folder) / f"{number}.wav"
            subprocess.run(["espeak-ng", "-v", voice, "-w", sound, said], check=True, stderr=subprocess.DEVNULL)
            result = transcribe(program, sound, language)
            worst = min(worst, share(said, result["text"]))
            seconds = f"{result['transcribeSeconds']:.2f} s for {result['audioSeconds']:.1f} s of speech"
            print(f"{language}  said   {said}\n    heard  {result['text'].strip()}   ({seconds})\n")
    if worst < RECOGNISABLE:
        sys.exit("a sentence came out with fewer than half of its words")
