"""What the program lives beside on a desktop: each can be killed, come back, stand still and go on."""
import os
import signal
import subprocess
from pathlib import Path

from docked_icon import start_bar
from sound_server import start_sound_server

HELD = "copied before"


class Neighbour:
    name = ""

    def __init__(self, desktop):
        self.desktop = desktop

    def numbers(self):
        """Of its processes."""
        raise NotImplementedError

    def begin(self):
        raise NotImplementedError

    def _signal(self, which):
        numbers = self.numbers()
        for number in numbers:
            try:
                os.kill(number, which)
            except ProcessLookupError:
                pass
        return numbers

    def kill(self):
        numbers = self._signal(signal.SIGKILL)
        if not numbers:
            raise RuntimeError(f"there is no {self.name} to be killed")
        self.desktop.wait(lambda: not any(map(_runs, numbers)), what=f"the end of the {self.name}")

    def come_back(self):
        self.begin()

    def freeze(self):
        if not self._signal(signal.SIGSTOP):
            raise RuntimeError(f"there is no {self.name} to be frozen")

    def thaw(self):
        self._signal(signal.SIGCONT)

    def _found(self, *words):
        """The desktop's processes with one of these words in their command lines."""
        return [number for number in self.desktop._descendants() if _has(number, words)]


def _has(number, words):
    try:
        line = Path(f"/proc/{number}/cmdline").read_text(encoding="utf-8", errors="replace")
    except OSError:
        return False
    return any(word in line for word in words) and _runs(number)


def _runs(number):
    try:
        return Path(f"/proc/{number}/stat").read_text(encoding="utf-8").rpartition(")")[2].split()[0] not in "ZX"
    except OSError:
        return False


class Started(Neighbour):
    """A process that the desktop starts for us."""

    def __init__(self, desktop, process=None):
        super().__init__(desktop)
        self.process = process
        if process is None:
            self.begin()

    def numbers(self):
        return [self.process.pid] if self.process and self.process.poll() is None else []

    def kill(self):
        super().kill()
        self.process.wait(5)


class SoundServer(Neighbour):
    name = "sound server"

    def numbers(self):
        return self._found("pulseaudio", "pipewire", "wireplumber")

    def begin(self):
        for socket in (self.desktop.folder / "pulse", *(self.desktop.folder / "run").glob("pipewire-*"),
                       self.desktop.folder / "run/pulse/native"):
            if socket.is_socket() or socket.is_file():
                socket.unlink()
        start_sound_server(self.desktop)


class SessionBus(Started):
    """At the same address when it comes back, as a bus of the user's service manager does."""
    name = "session bus"

    def __init__(self, desktop):
        self.address = desktop.environment["DBUS_SESSION_BUS_ADDRESS"]
        super().__init__(desktop, next(one for one in desktop.started if "dbus-daemon" in one.args))

    @staticmethod
    def give_address_for_life(desktop):
        """A bus that comes back has another identity, and would be refused by whoever was told the first one's."""
        address = desktop.environment["DBUS_SESSION_BUS_ADDRESS"].split(",")[0]
        desktop.environment.update(DBUS_SESSION_BUS_ADDRESS=address, DBUS_SYSTEM_BUS_ADDRESS=address)

    def begin(self):
        Path(self.address.partition("=")[2]).unlink(missing_ok=True)
        self.process = self.desktop.start("dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address=1",
                                          f"--address={self.address}", stdout=subprocess.PIPE)
        self.process.stdout.readline()


class ClipboardOwner(Started):
    name = "clipboard owner"

    def begin(self):
        self.process = self.desktop.start("xclip", "-selection", "clipboard", "-quiet", stdin=subprocess.PIPE)
        self.process.stdin.write(HELD)
        self.process.stdin.close()

    def own(self):
        """Once more, where something else was copied meanwhile."""
        if self.process.poll() is not None:
            self.begin()

    def come_back(self):
        self.own()


class AccessibilityBus(Neighbour):
    """The session bus starts it for the first program that asks."""
    name = "accessibility bus"

    def numbers(self):
        return self._found("at-spi")

    def begin(self):
        self.desktop.ask("dbus-send", "--session", "--print-reply", "--dest=org.a11y.Bus", "/org/a11y/bus",
                         "org.a11y.Bus.GetAddress")


class Tray(Started):
    name = "tray"

    def begin(self):
        before = len(self.desktop.started)
        start_bar(self.desktop)
        self.process = self.desktop.started[before]


class WindowManager(Started):
    name = "window manager"

    def __init__(self, desktop):
        super().__init__(desktop, next(one for one in desktop.started if "openbox" in one.args))

    def begin(self):
        self.process = self.desktop.start("openbox", "--config-file", str(self.desktop.folder / "config/openbox/rc.xml"),
                                          "--startup", "echo ready", stdout=subprocess.PIPE)
        self.process.stdout.readline()


class Compositor(Started):
    name = "compositor"

    def begin(self):
        self.process = self.desktop.start("picom", "--backend", "xrender", "--config", "/dev/null")


class TransferHelper(Neighbour):
    """At work on a download that lasts longer than the test."""
    name = "transfer helper"

    def __init__(self, desktop, hub, model):
        super().__init__(desktop)
        self.hub, self.model = hub, model
        self.begin()

    def numbers(self):
        """By its command line: what it was started with is shown to nobody else."""
        mark = f"tulvane-transfers\0--folder\0{self.desktop.folder}/"
        return [int(one.name) for one in Path("/proc").glob("[0-9]*") if _has(int(one.name), [mark])]

    def begin(self):
        """The command is gone; the download goes on without it."""
        before = len(self.hub.requests())
        asking = self.desktop.start(str(self.desktop.program), "models", "download", self.model)
        self.desktop.wait(lambda: len(self.hub.requests()) > before, limit=30, what="the download")
        asking.kill()  # asked to end, it would cancel the download
        asking.wait(5)

    def come_back(self):
        if not self.numbers():
            self.begin()
