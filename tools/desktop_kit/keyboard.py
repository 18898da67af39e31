"""Keys pressed at the level of the device, as a keyboard does it."""
import ctypes

ALT, SPACE, RIGHT_CONTROL = 64, 65, 105  # X key codes
SLAVE_KEYBOARD = 4


class DeviceInfo(ctypes.Structure):
    """XIDeviceInfo."""
    _fields_ = [("number", ctypes.c_int), ("name", ctypes.c_char_p), ("use", ctypes.c_int),
                ("attachment", ctypes.c_int), ("enabled", ctypes.c_int), ("class_count", ctypes.c_int),
                ("classes", ctypes.c_void_p)]


class Keyboard:
    """The user's own, and not the one that programs post keys with."""

    def __init__(self, display):
        self.x, self.test = ctypes.CDLL("libX11.so.6"), ctypes.CDLL("libXtst.so.6")
        self.input = ctypes.CDLL("libXi.so.6")
        self.x.XOpenDisplay.restype = self.input.XOpenDevice.restype = ctypes.c_void_p
        self.input.XIQueryDevice.restype = ctypes.POINTER(DeviceInfo)
        self.display = ctypes.c_void_p(self.x.XOpenDisplay(display.encode()))
        self.device = ctypes.c_void_p(self.input.XOpenDevice(self.display, ctypes.c_ulong(self.number())))
        # No program that has the server for itself holds a finger back.
        self.test.XTestGrabControl(self.display, 1)

    def number(self):
        count = ctypes.c_int()
        devices = self.input.XIQueryDevice(self.display, 0, ctypes.byref(count))
        return next(one.number for one in devices[:count.value]
                    if one.use == SLAVE_KEYBOARD and b"XTEST" not in one.name)

    def set(self, key, down):
        self.test.XTestFakeDeviceKeyEvent(self.display, self.device, key, down, None, 0, ctypes.c_ulong(0))
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
