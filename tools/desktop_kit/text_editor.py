"""A real text editor of the desktop with one file open: what stands in it is read from the editor, never from the
program that dictates."""
from accessible_program import AccessibleProgram

SETTINGS = "0.8.18.1.11\n{width}\n{height}\n{font}\n1\n0\n0\n8\n"  # … wrapped lines, no numbers, no indents, tabs


class TextEditor:
    def __init__(self, desktop, file, font="Inter 16", width=860, height=470):
        self.desktop, self.file = desktop, file
        settings = desktop.folder / "config/l3afpad/l3afpadrc"
        settings.parent.mkdir(parents=True, exist_ok=True)
        settings.write_text(SETTINGS.format(width=width, height=height, font=font))
        file.touch()
        desktop.start("l3afpad", str(file))
        self.window = desktop.wait(lambda: desktop.windows(file.name), what="the editor's window")[0]
        self.program = AccessibleProgram(desktop, "l3afpad")
        self.area = self.program.find("text")
        self.bring_to_front()

    def bring_to_front(self):
        self.desktop.run("xdotool", "windowactivate", "--sync", self.window)
        focused = self.program.atspi.StateType.FOCUSED
        self.desktop.wait(lambda: self.area.get_state_set().contains(focused), what="the cursor in the editor")

    def text(self):
        return self.program.atspi.Text.get_text(self.area, 0, -1)

    def key(self, name):
        self.desktop.run("xdotool", "key", name)

    def new_line(self):
        before = self.text()
        self.key("Return")
        self.desktop.wait(lambda: self.text() == before + "\n", what="the new line")

    def save(self):
        """Saved by its key; what stands in the file."""
        text = self.text()
        self.key("ctrl+s")
        self.desktop.wait(lambda: self.file.read_text() == text, what="the saved file")
        return text
