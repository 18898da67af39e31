#!/usr/bin/env python3
"""Draws every picture of the program that people have looked at and found good, and compares each with that one.

    pictures.py BIN_FOLDER REFERENCE_FOLDER OUTPUT_FOLDER     draws into OUTPUT_FOLDER; status 1 where one differs
    pictures.py BIN_FOLDER REFERENCE_FOLDER --update          draws new references, to be looked at and committed
"""
import os
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

PAGES = ["home", "models", "history", "statistics", "settings", "about"]
INDICATOR = [f"indicator-{kind}" for kind in ("listening", "minute", "ending", "transcribing", "inserting", "notice", "long-notice", "error")]
LOOKS = [(language, appearance) for language in ("en", "nb") for appearance in ("light", "dark")]


def runs():
    """The arguments of each run of tulvane_pictures, without its folder."""
    # Each state that has a look of its own, once in either language, and once on either ground.
    for language, appearance in (("en", "light"), ("nb", "dark")):
        look = ["--language", language, "--appearance", appearance]
        yield [*look, "--state", "verifying", "models"]
        for state in ("downloading", "refused"):
            yield [*look, "--state", state, "models", "onboarding"]
        yield [*look, "--state", "listening", "home", "onboarding"]
        for state in ("tested", "mute", "aside", "left"):
            yield [*look, "--state", state, "home"]
        yield [*look, "--state", "full", "--click", "history.copy.0", "--as", "copied", "history"]
        yield [*look, "--state", "full", "--click", "history.edit.2", "--as", "corrected", "history"]
        yield [*look, "--state", "bare", "--tall", "settings"]
        yield [*look, "--state", "full", "--tall", "--as", "whole", *PAGES]
        yield [*look, "--state", "full", "--size", "800x500", "--as", "small", *PAGES, "onboarding"]
    yield ["scale=2", "--state", "full", "--as", "double", "home", "settings", "onboarding"]
    for language, appearance in LOOKS:
        look = ["--language", language, "--appearance", appearance]
        yield [*look, "--state", "empty", *PAGES, "onboarding"]
        yield [*look, "--state", "full", *PAGES, "onboarding", *INDICATOR]
        yield [*look, "--state", "half", "--tall", "home", "onboarding"]
        yield [*look, "--state", "failed", "home"]
        yield [*look, "--state", "remnants", "--tall", "models"]


def draw(program, folder, arguments):
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", TZ="Europe/Oslo", LC_ALL="C.UTF-8")
    if arguments[0].startswith("scale="):
        environment["QT_SCALE_FACTOR"] = arguments[0].removeprefix("scale=")
        arguments = arguments[1:]
    run = subprocess.run([program, folder, *arguments], env=environment, capture_output=True, text=True, timeout=120)
    if run.returncode != 0:
        sys.exit(f"tulvane_pictures {' '.join(arguments)} ended with {run.returncode}:\n{run.stderr}")
    return run.stdout.split()


def main():
    programs, references, target = Path(sys.argv[1]), Path(sys.argv[2]), sys.argv[3]
    folder = references if target == "--update" else Path(target)
    folder.mkdir(parents=True, exist_ok=True)
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        drawn = [name for names in pool.map(lambda run: draw(programs / "tulvane_pictures", folder, run), runs())
                 for name in names]
    if target == "--update":
        # 256 colours are more than a page has, give or take its smoothing: a third of the bytes.
        subprocess.run(["mogrify", "-dither", "None", "-colors", "256", "-define", "png:compression-level=9", *drawn],
                       check=True)
        print(f"{len(drawn)} pictures in {folder}: look at each before you commit them")
        return
    unused = {file.name for file in references.glob("*.png")} - {Path(name).name for name in drawn}
    for name in sorted(unused):
        print(f"{name}: a reviewed picture that nothing draws any more")
    compared = subprocess.run([programs / "tulvane_compare_pictures", references, *drawn])
    sys.exit(1 if unused or compared.returncode != 0 else 0)


main()
