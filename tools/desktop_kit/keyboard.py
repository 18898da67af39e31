"""Keys pressed at the level of the device, as a keyboard does it."""
import ctypes

ALT, SPACE, RIGHT_CONTROL = 64, 65, 105  # X key codes


class Keyboard:
    def __init__(self, display):
        self.x, self.test = ctypes.CDLL("libX11.so.6"), ctypes.CDLL("libXtst.so.6")
        self.x.XOpenDisplay.restype = ctypes.c_void_p
        self.display = ctypes.c_void_p(self.x.XOpenDisplay(display.encode()))

    def set(self, key, down):
        self.test.XTestFakeKeyEvent(self.display, key, down, 0)
        self.x.XSync(self.display, 0)

    def press(self, *keys):
        """The first one first, and held."""
        for key in keys:
            self.set(key, 1)

    def release(self, *keys):
        """The last one first."""
        for key in reversed(keys):
            self.set(key, 0)

    def tap(self, *keys):
        self.press(*keys)
        self.release(*keys)
