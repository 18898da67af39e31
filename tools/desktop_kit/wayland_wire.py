"""The few words of the Wayland protocol that a keyboard needs, over the compositor's own socket: no library, and no
part of the program that is under test.

    wayland_wire.py SOCKET virtual LAYOUT | fake       keys on standard input, "CODE 1" for down; each is answered "ok"
"""
import array
import os
import socket
import struct
import sys
import threading
import time

MODIFIERS = {42: 1, 54: 1, 29: 4, 97: 4, 56: 8, 125: 64, 126: 64, 100: 128}  # evdev key to the keymap's bit


class Connection:
    """One connection; answers are read by a thread, so that the compositor never waits for us."""

    def __init__(self, path):
        self.socket = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        self.socket.connect(str(path))
        self.last = 1
        self.globals, self.done, self.rest = {}, {}, b""
        self.registry = self.new()
        self.send(1, 1, struct.pack("I", self.registry))
        threading.Thread(target=self._read, daemon=True).start()
        self.round_trip()

    def new(self):
        self.last += 1
        return self.last

    def send(self, thing, opcode, data=b"", fds=()):
        head = struct.pack("II", thing, (8 + len(data)) << 16 | opcode)
        rights = [(socket.SOL_SOCKET, socket.SCM_RIGHTS, array.array("i", fds))] if fds else []
        self.socket.sendmsg([head + data], rights)

    @staticmethod
    def text(words):
        data = words.encode() + b"\0"
        return struct.pack("I", len(data)) + data + b"\0" * (-len(data) % 4)

    def bind(self, interface, version):
        """Raises KeyError where the compositor has no such interface."""
        name, offered = self.globals[interface]
        version = min(version, offered)
        thing = self.new()
        self.send(self.registry, 0, struct.pack("I", name) + self.text(interface) + struct.pack("II", version, thing))
        return thing

    def round_trip(self):
        callback, came = self.new(), threading.Event()
        self.done[callback] = came
        self.send(1, 0, struct.pack("I", callback))
        if not came.wait(10):
            raise TimeoutError("the compositor does not answer")

    def _read(self):
        while True:
            try:
                data = self.socket.recv(65536)
            except OSError:
                return
            if not data:
                return
            self.rest += data
            while len(self.rest) >= 8:
                thing, head = struct.unpack("II", self.rest[:8])
                size = head >> 16
                if len(self.rest) < size:
                    break
                self._take(thing, head & 0xFFFF, self.rest[8:size])
                self.rest = self.rest[size:]

    def _take(self, thing, opcode, data):
        if thing == self.registry and opcode == 0:
            name, size = struct.unpack("II", data[:8])
            interface = data[8:8 + size - 1].decode()
            version = struct.unpack("I", data[8 + (size + 3) // 4 * 4:][:4])[0]
            self.globals.setdefault(interface, (name, version))
        elif thing in self.done:
            self.done.pop(thing).set()

class VirtualKeyboard:
    """A keyboard of its own beside the seat's others, on wlroots desktops."""

    def __init__(self, path, layout):
        self.wire = Connection(path)
        seat = self.wire.bind("wl_seat", 1)
        manager = self.wire.bind("zwp_virtual_keyboard_manager_v1", 1)
        self.thing = self.wire.new()
        self.wire.send(manager, 0, struct.pack("II", seat, self.thing))
        self.modifiers = 0
        self.set_layout(layout)

    def set_layout(self, layout):
        # The compositor resolves what is included.
        keymap = ('xkb_keymap { xkb_keycodes { include "evdev+aliases(qwerty)" }; xkb_types { include "complete" }; '
                  'xkb_compat { include "complete" }; '
                  f'xkb_symbols {{ include "pc+{layout}+inet(evdev)" }}; }};').encode() + b"\0"
        file = os.memfd_create("keymap")
        os.write(file, keymap)
        self.wire.send(self.thing, 0, struct.pack("II", 1, len(keymap)), [file])
        self.wire.round_trip()
        os.close(file)

    def key(self, code, down):
        now = int(time.monotonic() * 1000) & 0xFFFFFFFF
        self.wire.send(self.thing, 1, struct.pack("III", now, code, int(down)))
        bit = MODIFIERS.get(code, 0)
        if bit:
            self.modifiers = self.modifiers | bit if down else self.modifiers & ~bit
            self.wire.send(self.thing, 2, struct.pack("IIII", self.modifiers, 0, 0, 0))
        self.wire.round_trip()


class FakeInput:
    """Keys on KWin's own keyboard."""

    def __init__(self, path):
        self.wire = Connection(path)
        self.thing = self.wire.bind("org_kde_kwin_fake_input", 4)
        self.wire.send(self.thing, 0, self.wire.text("test") + self.wire.text("keys of a test"))
        self.wire.round_trip()

    def key(self, code, down):
        self.wire.send(self.thing, 10, struct.pack("II", code, int(down)))
        self.wire.round_trip()


class KeyPresser:
    """A process of the desktop's own user with such a keyboard: KWin lets no other user's process press keys."""

    def __init__(self, desktop, *words):
        self.process = desktop.start("/usr/bin/python3", __file__, *words, stdin=-1, stdout=-1)
        self.answer()

    def key(self, code, down):
        self.process.stdin.write(f"{code} {int(down)}\n")
        self.process.stdin.flush()
        self.answer()

    def answer(self):
        line = self.process.stdout.readline().strip()
        if line != "ok":
            raise RuntimeError(f"no key can be pressed: {line}")

    def close(self):
        self.process.stdin.close()


def main():
    try:
        keyboard = VirtualKeyboard(sys.argv[1], sys.argv[3]) if sys.argv[2] == "virtual" else FakeInput(sys.argv[1])
    except KeyError as problem:
        sys.exit(print(f"the compositor lacks {problem}"))
    print("ok", flush=True)
    for line in sys.stdin:
        code, down = line.split()
        keyboard.key(int(code), down == "1")
        print("ok", flush=True)


if __name__ == "__main__":
    main()
