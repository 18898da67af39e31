"""A real text editor on a Wayland desktop with one file open: what stands in it is read from the editor, never from the
program that dictates."""
import json
import subprocess
from pathlib import Path

from text_editor import SETTINGS

READER = Path(__file__).resolve().parent / "accessible_reader.py"


class WaylandEditor:
    def __init__(self, desktop, file, font="Inter 16", width=860, height=470):
        self.desktop, self.file = desktop, file
        settings = desktop.folder / "config/l3afpad/l3afpadrc"
        settings.parent.mkdir(parents=True, exist_ok=True)
        settings.write_text(SETTINGS.format(width=width, height=height, font=font))
        file.touch()
        desktop.own()
        desktop.start("l3afpad", str(file))
        self.reader = desktop.start("/usr/bin/python3", str(READER), "l3afpad", stdin=subprocess.PIPE,
                                    stdout=subprocess.PIPE)
        self.next_text()

    def next_text(self):
        line = self.reader.stdout.readline()
        if not line:
            raise TimeoutError("the editor cannot be read")
        return json.loads(line)

    def text(self):
        self.reader.stdin.write("\n")
        self.reader.stdin.flush()
        return self.next_text()

    def new_line(self):
        before = self.text()
        self.desktop.key("return")
        self.desktop.wait(lambda: self.text() == before + "\n", what="the new line")

    def save(self):
        """Saved by its key; what stands in the file."""
        text = self.text()
        self.desktop.key("ctrl+s")
        self.desktop.wait(lambda: self.file.read_text() == text, what="the saved file")
        return text
