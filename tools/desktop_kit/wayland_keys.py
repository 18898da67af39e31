"""The user's keyboard on a Wayland desktop, as Keyboard is on X11."""

ALT, SPACE, CONTROL, SHIFT, RETURN = 56, 57, 29, 42, 28  # the kernel's numbers


class WaylandKeys:
    def __init__(self, desktop):
        self.desktop, self.held = desktop, []

    def press(self, *keys):
        """The first one first, and held."""
        self.desktop.down(*keys)
        self.held += keys

    def release(self, *keys):
        """The last one first; what is not held is left alone."""
        for key in reversed(keys):
            if key in self.held:
                self.held.remove(key)
                self.desktop.up(key)

    def tap(self, *keys):
        self.press(*keys)
        self.release(*keys)
