#!/usr/bin/env python3
"""Small rules of the house that no compiler knows: file lengths, leftovers, `#pragma once`.

    check_files.py ROOT
"""
import re
import subprocess
import sys
from pathlib import Path

LONGEST = 500
LEFTOVER = re.compile(r"\b(?:TO" r"DO|FIX" r"ME|XX" r"X|HA" r"CK)\b")


def main():
    root = Path(sys.argv[1])
    listed = subprocess.run(["git", "-C", root, "ls-files", "--cached", "--others", "--exclude-standard"],
                            capture_output=True, text=True, check=True).stdout.splitlines()
    problems = []
    for name in listed:
        path = root / name
        if path.suffix not in {".h", ".cpp", ".mm", ".qml", ".py", ".sh"} or not path.is_file():
            continue
        text = path.read_text(encoding="utf-8")
        if len(text.splitlines()) > LONGEST:
            problems.append(f"{name}: longer than {LONGEST} lines")
        if path.suffix == ".h" and "#pragma once" not in text:
            problems.append(f"{name}: no #pragma once")
        problems += [f"{name}:{number}: leftover: {line.strip()}"
                     for number, line in enumerate(text.splitlines(), 1) if LEFTOVER.search(line)]
    for problem in problems:
        print(problem)
    sys.exit(1 if problems else 0)


main()
