#!/usr/bin/env python3
"""Small rules of the house that no compiler knows: file lengths, leftovers, `#pragma once`.

    check_files.py ROOT
"""
import re
import subprocess
import sys
from pathlib import Path

LONGEST = 500
# A process number of 0, which an ended QProcess has, would be the test's own group, and with it whoever runs the tests.
KILL = re.compile(r"(?<![\w.>])kill\((?!\)|::getpid\(\)|const )")
KILLER = "tests/support/Signals.cpp"
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
        if path.suffix == ".cpp" and name != KILLER:
            problems += [f"{name}:{number}: kill(); sendSignal() of support/Signals.h sends to one process only"
                         for number, line in enumerate(text.splitlines(), 1) if KILL.search(line)]
    for problem in problems:
        print(problem)
    sys.exit(1 if problems else 0)


main()
