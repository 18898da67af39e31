"""engine_names.py ADDRESS: the name of the input method's engine, a line for each that comes into force. The service speaks
with its own user alone, so this is a process of its own."""
import sys

from gi.repository import Gio, GLib

flags = Gio.DBusConnectionFlags
bus = Gio.DBusConnection.new_for_address_sync(sys.argv[1], flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None,
                                              None)
bus.signal_subscribe(None, "org.freedesktop.IBus", "GlobalEngineChanged", None, None, 0,
                     lambda *signal: print(signal[5].unpack()[0], flush=True))
print("listening", flush=True)
GLib.MainLoop().run()
