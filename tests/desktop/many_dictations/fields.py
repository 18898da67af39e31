"""Real programs with a field each, side by side on one desktop, and what stands in them."""
from pathlib import Path

from field_program import FieldProgram

TARGETS = Path(__file__).resolve().parent.parent.parent / "support/targets"


class Field(FieldProgram):
    def __init__(self, desktop, name, *command):
        self.name = name
        before = desktop.xdotool("getactivewindow")
        super().__init__(desktop, *command)
        self.window = self.came_to_front(before)

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
