"""The phases of the running program, each with the moment at which it was told over the session bus."""
import threading
import time

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

NAME, PATH = "com.dunio.Tulvane", "/com/dunio/Tulvane"


class Lost(Exception):
    """A dictation that came to no text."""


class Phases:
    def __init__(self, desktop):
        self.desktop, self.told, self.seen = desktop, threading.Condition(), []
        listening = threading.Event()
        threading.Thread(target=self._listen, args=(listening,), daemon=True).start()
        if not listening.wait(15):
            raise TimeoutError("the session bus does not answer")

    def _listen(self, listening):
        context = GLib.MainContext.new()
        context.push_thread_default()
        flags = Gio.DBusConnectionFlags
        bus = Gio.DBusConnection.new_for_address_sync(
            self.desktop.environment["DBUS_SESSION_BUS_ADDRESS"],
            flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None)
        bus.signal_subscribe(None, NAME, "PhaseChanged", PATH, None, Gio.DBusSignalFlags.NONE, self._note)
        # The bus takes calls in their order: once it answers, what was subscribed is sent to us.
        bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "GetId", None, None,
                      Gio.DBusCallFlags.NONE, -1, None)
        listening.set()
        GLib.MainLoop.new(context, False).run()

    def _note(self, _bus, _sender, _path, _interface, _signal, values):
        with self.told:
            self.seen.append((time.monotonic(), values.unpack()[0]))
            self.told.notify_all()

    @property
    def current(self):
        with self.told:
            return self.seen[-1][1] if self.seen else "idle"

    def wait(self, name, since, limit=30):
        """The moment of the first such phase since then. A notice or an error instead of it raises Lost."""
        end = time.monotonic() + limit
        with self.told:
            while True:
                for moment, phase in self.seen:
                    if moment >= since and phase == name:
                        return moment
                    if moment >= since and phase in ("notice", "error"):
                        raise Lost(self.desktop.status()["message"] or f"the program shows: {phase}")
                if not self.told.wait(max(0.0, end - time.monotonic())):
                    raise Lost(f"the phase “{name}” did not come")
