"""Real programs with a field each, side by side on one desktop, and what stands in them."""
import json
import subprocess
from pathlib import Path

TARGETS = Path(__file__).resolve().parent.parent.parent / "support/targets"


class Field:
    """A program that tells what its field holds."""

    def __init__(self, desktop, name, *command):
        self.desktop, self.name, self.last = desktop, name, 0
        before = desktop.xdotool("getactivewindow")
        self.process = desktop.start(*command, stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        while json.loads(self.process.stdout.readline()).get("event") != "ready":
            pass
        self.window = self.came_to_front(before)

    def text(self):
        self.last += 1
        self.process.stdin.write(json.dumps({"id": self.last, "do": "report"}) + "\n")
        self.process.stdin.flush()
        while True:
            answer = json.loads(self.process.stdout.readline())
            if answer.get("id") == self.last:
                return answer["text"]

    def came_to_front(self, before):
        """The new window, once it is the active one."""
        def active():
            window = self.desktop.xdotool("getactivewindow")
            return window if window not in ("", before) else None
        return self.desktop.wait(active, what=f"the window of {self.name}")

    def bring_to_front(self):
        self.desktop.run("xdotool", "windowactivate", "--sync", self.window)


class Terminal(Field):
    """xterm, with a program in it that keeps every byte that it gets."""

    def __init__(self, desktop):
        self.desktop, self.name, self.file = desktop, "xterm", desktop.folder / "terminal"
        before = desktop.xdotool("getactivewindow")
        desktop.start("xterm", "-u8", "-e", "/usr/bin/python3", str(TARGETS / "terminal_reader.py"), str(self.file))
        desktop.wait(self.file.exists, what="the terminal")
        self.window = self.came_to_front(before)

    def text(self):
        return self.file.read_text()


def open_fields(desktop, programs):
    python = "/usr/bin/python3"
    return [Field(desktop, "GTK 3", python, str(TARGETS / "gtk_target.py"), "view"),
            Field(desktop, "GTK 4", python, str(TARGETS / "gtk4_target.py")),
            Field(desktop, "Qt 6", str(programs / "tulvane_qt_target"), "text"),
            Terminal(desktop)]
