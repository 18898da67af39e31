#!/usr/bin/env python3
"""Holds every include of src/ against the arrows between the rooms.

    check_layers.py ROOT            prints each include that goes the wrong way; status 1 if there is one
    check_layers.py ROOT --self     proves on made-up trees that a wrong include is found
"""
import re
import sys
import tempfile
from pathlib import Path

LINUX = "platform/linux/"
DOMAIN = {"audio", "speech", "models", "hotkeys", "insertion", "stats", "permissions"}
FOUNDATION = {"base", "base/async", "ports", "settings"}
PROGRAM = FOUNDATION | DOMAIN | {"speech/device", "speech/whisper", "audio/files", "dictation"}
ADAPTER = {"base", "base/async", "ports"}
SHARED_ADAPTERS = {LINUX + room for room in
                   ("storage", "process", "pulse", "atspi", "transfers", "keys", "desktop", "desktop/shell")}
# What single desktops do for a program, over their own services.
SERVICES = {LINUX + room for room in ("kde", "gnome", "evdev", "portal", "remote")}
X11 = [LINUX + "x11/" + room for room in ("connection", "keyboard", "clipboard", "windows")]
WAYLAND = [LINUX + "wayland/" + room for room in ("connection", "keyboard", "clipboard", "windows", "fields")]
FORMATS = LINUX + "formats"
FRONT = LINUX + "front"

# What each room may include besides itself; a room is the longest folder named here that a file lies in.
MAY = {
    "": set(),
    "base": set(),
    "base/async": {"base"},
    "ports": {"base"},
    "settings": {"base", "ports"},
    **{room: {"base", "base/async", "ports", "settings"} for room in DOMAIN},
    # The recogniser's port says its engine's errors.
    "speech": {"base", "ports", "settings", "speech/whisper"},
    "speech/device": {"base", "ports", "speech"},
    "speech/whisper": {"base", "base/async", "ports", "speech"},
    "audio/files": {"base", "audio"},
    "dictation": PROGRAM - {"audio/files"},
    "ui": PROGRAM - {"audio/files", "speech/whisper"},
    "app/program": PROGRAM - {"dictation"},
    "app/cli": PROGRAM | {"app/program"},
    "app": PROGRAM | {"app/program", "app/cli", "ui"},
    "platform/fake": ADAPTER,
    **{LINUX + room: ADAPTER for room in ("storage", "process", "pulse", "atspi", "keys", "transfers", "formats", "front",
                                       "caller")},
    LINUX + "desktop": ADAPTER | {LINUX + "caller"},
    LINUX + "desktop/shell": ADAPTER | {LINUX + "desktop"},
    LINUX + "transfers/http": ADAPTER | {LINUX + "transfers"},
    LINUX + "transfers/helper": ADAPTER | {LINUX + "transfers", LINUX + "transfers/http"},
    X11[0]: ADAPTER,
    LINUX + "layout": ADAPTER,
    LINUX + "evdev": ADAPTER,
    LINUX + "kde": ADAPTER | {LINUX + room for room in ("keys", "layout", "process", "desktop")},
    LINUX + "remote": ADAPTER | {LINUX + "layout", LINUX + "atspi"},
    LINUX + "gnome": ADAPTER | {LINUX + room for room in ("keys", "layout", "atspi", "process", "desktop", "remote")},
    LINUX + "portal": ADAPTER | {LINUX + room for room in ("keys", "layout", "desktop", "atspi", "remote")},
    X11[1]: ADAPTER | {X11[0], LINUX + "keys", LINUX + "layout"},
    X11[2]: ADAPTER | {X11[0], X11[1], FORMATS, FRONT},
    X11[3]: ADAPTER | {X11[0]},
    WAYLAND[0]: ADAPTER,
    WAYLAND[1]: ADAPTER | {WAYLAND[0], LINUX + "keys", LINUX + "layout"},
    WAYLAND[2]: ADAPTER | {WAYLAND[0], FORMATS, FRONT},
    WAYLAND[3]: ADAPTER | {WAYLAND[0]},
    WAYLAND[4]: ADAPTER | {WAYLAND[0]},
    LINUX + "sway": ADAPTER | {LINUX + "keys", FRONT},
    LINUX + "session": ADAPTER | {LINUX + room for room in ("keys", "evdev", "sway", "gnome", "portal")} |
                       {FRONT, *X11, *WAYLAND},
    # The executable that people call loads these: no library that speaks with another process.
    LINUX + "session/local": ADAPTER | {LINUX + "storage", LINUX + "process", LINUX + "caller"},
    # The other commands load these: nothing that draws.
    LINUX + "session/services": ADAPTER | SHARED_ADAPTERS - {LINUX + "desktop/shell"} | {LINUX + "session"},
    LINUX + "session/desktop": ADAPTER | SHARED_ADAPTERS | SERVICES |
                               {LINUX + "session", LINUX + "sway", LINUX + "layout", FRONT, *X11, *WAYLAND},
}
INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]', re.M)
OS_TEST = re.compile(r"^\s*#\s*(?:el)?if.*(?:__linux__|__APPLE__|Q_OS_|_WIN32)", re.M)
# Files and their locks are the same on every system that the program is for.
POSIX_FILES = {"fcntl.h", "sys/file.h", "sys/stat.h", "sys/types.h", "unistd.h"}
OS_HEADER = re.compile(r"^(?:xcb/|X11/|pulse/|atspi/|sys/|linux/|unistd\.h|fcntl\.h|QDBus)")


def room_of(path):
    """The room that a path below src/ belongs to; None where the table knows none."""
    folder = Path(path).parent
    while folder.as_posix() != ".":
        if folder.as_posix() in MAY:
            return folder.as_posix()
        folder = folder.parent
    return "" if Path(path).parent.as_posix() == "." else None


def problems(root):
    source = Path(root) / "src"
    for file in sorted(source.rglob("*")):
        if file.suffix not in {".h", ".cpp", ".mm"}:
            continue
        relative = file.relative_to(source)
        room = room_of(relative)
        text = file.read_text(encoding="utf-8")
        if room is None:
            yield f"src/{relative}: its room is in no table of arrows"
            continue
        is_adapter = room.startswith("platform/")
        if not is_adapter and OS_TEST.search(text):
            yield f"src/{relative}: asks which operating system this is, outside platform/"
        for target in INCLUDE.findall(text):
            if not is_adapter and not room.startswith("app") and OS_HEADER.match(target) and \
                    not (room == "base" and target in POSIX_FILES):
                yield f"src/{relative}: includes the operating system's <{target}>"
            if "/" not in target or not (source / target).exists():
                continue
            other = room_of(target)
            if other != room and other not in MAY[room]:
                yield f"src/{relative}: {room} must not include <{target}>"


def self_check():
    x11 = "platform/linux/x11/"
    cases = {
        "base/A.h": ("#include <settings/B.h>\n", True),
        "audio/A.cpp": ("#include <speech/B.h>\n", True),
        "ports/Port.h": (f"#include <{x11}connection/B.h>\n", True),
        f"{x11}connection/A.cpp": ("#include <settings/B.h>\n", True),
        f"{x11}keyboard/A.cpp": (f"#include <{x11}clipboard/B.h>\n", True),
        f"{x11}clipboard/A.cpp": (f"#include <{x11}keyboard/B.h>\n#include <{x11}connection/B.h>\n", False),
        f"{x11}windows/A.cpp": (f"#include <{x11}keyboard/B.h>\n", True),
        "platform/linux/desktop/shell/A.cpp": (f"#include <{x11}connection/B.h>\n", True),
        "platform/linux/session/services/A.cpp": ("#include <platform/linux/desktop/shell/B.h>\n", True),
        "platform/linux/session/desktop/A.cpp": ("#include <platform/linux/desktop/shell/B.h>\n", False),
        "platform/linux/unheardof/A.cpp": ("\n", True),
        "platform/fake/A.h": (f"#include <{x11}connection/B.h>\n", True),
        "speech/Os.cpp": ("#ifdef __x\n#elif defined(Q_OS_LINUX)\n#endif\n", True),
        "ui/Os.cpp": ("#include <xcb/xcb.h>\n", True),
        "ui/A.cpp": (f"#include <{x11}connection/B.h>\n", True),
        "dictation/A.cpp": ("#include <ui/B.h>\n", True),
        "settings/A.cpp": ("#include <ports/Port.h>\n#include <base/A.h>\n", False),
        "app/A.cpp": (f"#include <{x11}connection/B.h>\n", True),
        "app/B.cpp": ("#include <platform/linux/session/B.h>\n", True),
        "app/cli/A.cpp": ("#include <ui/B.h>\n", True),
        "app/C.cpp": ("#include <ui/B.h>\n#include <ports/Port.h>\n", False),
    }
    targets = ["settings/B.h", "speech/B.h", "ui/B.h", "ports/Port.h", "base/A.h", f"{x11}connection/B.h",
               f"{x11}keyboard/B.h", f"{x11}clipboard/B.h", "platform/linux/desktop/shell/B.h",
               "platform/linux/session/B.h"]
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
