"""The X server's bell, heard."""
import ctypes

BELL = 8  # the kind of XKB event that tells of a bell
CORE_KEYBOARD = 0x100


class BellListener:
    """Counts how often the bell of a display has rung since the last look."""

    def __init__(self, display):
        self.x = ctypes.CDLL("libX11.so.6")
        self.x.XOpenDisplay.restype = ctypes.c_void_p
        self.x.XkbOpenDisplay.restype = ctypes.c_void_p
        self.server = ctypes.c_void_p(self.x.XkbOpenDisplay(display.encode(), None, None, None, None, None))
        if not self.server:
            raise RuntimeError(f"{display} cannot be opened")
        bit = ctypes.c_ulong(1 << BELL)
        self.x.XkbSelectEvents(self.server, ctypes.c_uint(CORE_KEYBOARD), bit, bit)
        self.x.XSync(self.server, 0)

    def rings(self):
        self.x.XSync(self.server, 0)
        event, count = ctypes.create_string_buffer(256), 0
        while self.x.XPending(self.server):
            # The bell is all that was asked for, but each client receives changes of the keyboard layout as well.
            self.x.XNextEvent(self.server, event)
            kind = ctypes.cast(event, ctypes.POINTER(ctypes.c_int))[0]
            if kind >= 64 and ctypes.cast(ctypes.byref(event, 40), ctypes.POINTER(ctypes.c_int))[0] == BELL:
                count += 1
        return count

    def close(self):
        self.x.XCloseDisplay(self.server)
