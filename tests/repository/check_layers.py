#!/usr/bin/env python3
"""Holds every include of src/ against the arrows between the rooms.

    check_layers.py ROOT            prints each include that goes the wrong way; status 1 if there is one
    check_layers.py ROOT --self     proves on made-up trees that a wrong include is found
"""
import re
import sys
import tempfile
from pathlib import Path

DOMAIN = {"audio", "speech", "models", "hotkeys", "insertion", "stats", "permissions"}
FOUNDATION = {"base", "platform", "settings"}
# What each room may include besides itself. ModelManager stands on the catalogue in its own room.
MAY = {
    "base": set(),
    "platform": {"base"},
    "adapter": {"base", "platform"},
    "settings": {"base", "platform"},
    **{room: set(FOUNDATION) for room in DOMAIN},
    "dictation": FOUNDATION | DOMAIN,
    "ui": FOUNDATION | DOMAIN | {"dictation"},
    "app": FOUNDATION | DOMAIN | {"dictation", "ui", "adapter"},
}
INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]', re.M)
OS_TEST = re.compile(r"^\s*#\s*(?:el)?if.*(?:__linux__|__APPLE__|Q_OS_|_WIN32)", re.M)
OS_HEADER = re.compile(r"^(?:xcb/|X11/|pulse/|atspi/|sys/|linux/|unistd\.h|fcntl\.h|QDBus)")


def room_of(path):
    """The room that a path below src/ belongs to; an adapter or a fake is not a port."""
    parts = Path(path).parts
    if parts[0] == "platform" and len(parts) > 2:
        return "adapter"
    return parts[0]


def problems(root):
    source = Path(root) / "src"
    for file in sorted(source.rglob("*")):
        if file.suffix not in {".h", ".cpp", ".mm"}:
            continue
        relative = file.relative_to(source)
        room = room_of(relative)
        text = file.read_text(encoding="utf-8")
        if room not in MAY:
            yield f"src/{relative}: the room “{room}” is in no table of arrows"
            continue
        if room != "adapter" and OS_TEST.search(text):
            yield f"src/{relative}: asks which operating system this is, outside platform/"
        for target in INCLUDE.findall(text):
            if room not in {"adapter", "app"} and OS_HEADER.match(target):
                yield f"src/{relative}: includes the operating system's <{target}>"
            if "/" not in target or not (source / target).exists():
                continue
            other = room_of(target)
            if other != room and other not in MAY[room]:
                yield f"src/{relative}: {room} must not include <{target}>"


def self_check():
    cases = {
        "base/A.h": ("#include <settings/B.h>\n", True),
        "audio/A.cpp": ("#include <speech/B.h>\n", True),
        "platform/Port.h": ("#include <platform/linux/x11/B.h>\n", True),
        "platform/linux/x11/A.cpp": ("#include <settings/B.h>\n", True),
        "speech/Os.cpp": ("#ifdef __x\n#elif defined(Q_OS_LINUX)\n#endif\n", True),
        "ui/Os.cpp": ("#include <xcb/xcb.h>\n", True),
        "settings/A.cpp": ("#include <platform/Port.h>\n#include <base/A.h>\n", False),
        "app/A.cpp": ("#include <platform/linux/x11/B.h>\n", False),
    }
    targets = ["settings/B.h", "speech/B.h", "platform/linux/x11/B.h", "platform/Port.h", "base/A.h"]
    for name, (text, wrong) in cases.items():
        with tempfile.TemporaryDirectory() as root:
            for target in targets:
                path = Path(root) / "src" / target
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_text("", encoding="utf-8")
            path = Path(root) / "src" / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
            found = list(problems(root))
            if bool(found) != wrong:
                sys.exit(f"{name}: expected {'a problem' if wrong else 'none'}, found {found}")


def main():
    if "--self" in sys.argv:
        self_check()
        return
    found = list(problems(sys.argv[1]))
    for line in found:
        print(line)
    sys.exit(1 if found else 0)


main()
