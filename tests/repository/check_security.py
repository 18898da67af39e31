#!/usr/bin/env python3
"""Every test that docs/security.md names for a promise must be there.

    check_security.py ROOT            prints what is not; status 1 if there is anything
    check_security.py ROOT --self     proves on made-up tables that a missing test is found
"""
import re
import sys
from pathlib import Path

SUITE = re.compile(r"(test|contract|desktop|cli|fuzz)_\w+")


def known(root):
    """The names of suites, fixtures and tests, each alone and as FIXTURE.TEST."""
    names = set()
    for file in (root / "tests").rglob("*"):
        if file.suffix == ".cpp":
            for fixture, test in re.findall(r"^(?:TYPED_)?TEST(?:_[FP])?\((\w+),\s*(\w+)\)", file.read_text(), re.M):
                names |= {fixture, test, f"{fixture}.{test}"}
        elif file.name == "CMakeLists.txt":
            text = file.read_text()
            names |= {f"desktop_{part}" for part in re.findall(r"tulvane_desktop_script\((\w+)", text)}
            names |= {f"cli_{part}" for line in re.findall(r"suite IN ITEMS ([\w ]+)\)", text) for part in line.split()}
            names |= {found[0] for found in re.finditer(SUITE, text)}
    return names


def missing(document, names):
    for line in document.splitlines():
        cells = line.split("|")
        if len(cells) < 4 or cells[2].strip() in ("held by", "---"):
            continue
        held = re.findall(r"`([\w.]+)`", cells[2])
        if not held:
            yield f"no test holds: {cells[1].strip()}"
        for name in held:
            if name not in names:
                yield f"no test is called {name}"


def prove():
    names = {"test_process", "Confined", "Confined.Reads"}
    table = "| promise | held by |\n|---|---|\n| one | `test_process`: `Confined.Reads` |\n"
    assert not list(missing(table, names))
    assert list(missing(table + "| two | `Confined.Writes` |\n", names)) == ["no test is called Confined.Writes"]
    assert list(missing(table + "| three | trust us |\n", names)) == ["no test holds: three"]


def main():
    root = Path(sys.argv[1])
    if "--self" in sys.argv:
        prove()
        return 0
    found = list(missing((root / "docs/security.md").read_text(), known(root)))
    for line in found:
        print(f"docs/security.md: {line}")
    return 1 if found else 0


sys.exit(main())
