"""A terminal as a field to write in, which needs nothing of a desktop but its display."""
from pathlib import Path

READER = Path(__file__).resolve().parent.parent / "targets/terminal_reader.py"


class TerminalField:
    """xterm, with a program in it that keeps every byte that it gets."""

    def __init__(self, desktop):
        self.desktop, self.file = desktop, desktop.folder / "terminal"
        desktop.start("xterm", "-u8", "-title", "field", "-e", "/usr/bin/python3", str(READER), str(self.file))
        desktop.wait(self.file.exists, what="the terminal")
        self.window = desktop.wait(lambda: desktop.windows("field"), what="the terminal's window")[0]

    def bring_to_front(self):
        self.desktop.run("xdotool", "windowactivate", "--sync", self.window)

    def text(self):
        return self.file.read_text(encoding="utf-8")
