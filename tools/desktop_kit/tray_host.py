#!/usr/bin/python3
"""A desktop's bar with status icons: keeps the book of the icons on the session bus, and reads and clicks
the one that is there as a bar does. Reads commands from its standard input, and answers each with a line of JSON:

    wait        the icon's bus name, once there is one
    gone        true, once there is none any more
    there       whether there is one
    icon        the icon's properties; of its pictures, width, height and digest
    menu        the menu from its first line down: id, label, type, enabled, toggle, children
    open        tells the icon that its menu is about to open
    click ID    clicks a line of the menu
    activate    clicks the icon itself
    host        a bar appears (where it was started with --without-host)
"""
import hashlib
import json
import sys

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

WATCHER, ITEM, MENU = "org.kde.StatusNotifierWatcher", "org.kde.StatusNotifierItem", "com.canonical.dbusmenu"
INTERFACE = f"""<node><interface name="{WATCHER}">
  <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
  <method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
  <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  <property name="ProtocolVersion" type="i" access="read"/>
  <signal name="StatusNotifierItemRegistered"><arg type="s"/></signal>
  <signal name="StatusNotifierItemUnregistered"><arg type="s"/></signal>
  <signal name="StatusNotifierHostRegistered"/>
</interface></node>"""


class Bar:
    def __init__(self, has_host):
        self.item, self.has_host, self.waiting = None, has_host, None
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        node = Gio.DBusNodeInfo.new_for_xml(INTERFACE)
        self.bus.register_object("/StatusNotifierWatcher", node.interfaces[0], self.called, self.read, None)
        self.bus.signal_subscribe("org.freedesktop.DBus", "org.freedesktop.DBus", "NameOwnerChanged", None, None,
                                  Gio.DBusSignalFlags.NONE, self.owner_changed)
        Gio.bus_own_name_on_connection(self.bus, WATCHER, Gio.BusNameOwnerFlags.NONE,
                                       lambda *_: self.say("ready"), None)

    @staticmethod
    def say(answer):
        print(json.dumps(answer), flush=True)

    def called(self, _bus, _sender, _path, _interface, method, arguments, invocation):
        if method == "RegisterStatusNotifierItem":
            self.item = arguments[0]
            self.tell("StatusNotifierItemRegistered", GLib.Variant("(s)", (self.item,)))
        invocation.return_value(None)
        self.look()

    def read(self, _bus, _sender, _path, _interface, name):
        if name == "IsStatusNotifierHostRegistered":
            return GLib.Variant("b", self.has_host)
        if name == "ProtocolVersion":
            return GLib.Variant("i", 0)
        return GLib.Variant("as", [self.item] if self.item else [])

    def owner_changed(self, _bus, _sender, _path, _interface, _signal, arguments):
        if arguments[0] == self.item and not arguments[2]:
            self.item = None
            self.look()

    def tell(self, signal, arguments=None):
        self.bus.emit_signal(None, "/StatusNotifierWatcher", WATCHER, signal, arguments)

    def look(self):
        """Answers what waits for the icon to come or go."""
        if self.waiting == "wait" and self.item:
            self.waiting = None
            self.say(self.item)
        elif self.waiting == "gone" and not self.item:
            self.waiting = None
            self.say(True)

    def call(self, path, interface, method, arguments=None):
        return self.bus.call_sync(self.item, path, interface, method, arguments, None, Gio.DBusCallFlags.NONE,
                                  5000, None)

    def icon(self):
        properties = self.call("/StatusNotifierItem", "org.freedesktop.DBus.Properties", "GetAll",
                               GLib.Variant("(s)", (ITEM,))).unpack()[0]
        properties["IconPixmap"] = [[width, height, hashlib.sha256(bytes(data)).hexdigest()]
                                    for width, height, data in properties.get("IconPixmap", [])]
        return {name: value for name, value in properties.items()
                if isinstance(value, (str, bool, int)) or name in ("IconPixmap", "ToolTip")}

    def lines(self, layout):
        number, properties, children = layout
        return {"id": number, "label": properties.get("label", ""), "type": properties.get("type", "standard"),
                "enabled": properties.get("enabled", True), "visible": properties.get("visible", True),
                "toggle": properties.get("toggle-type", ""), "on": properties.get("toggle-state", 0) == 1,
                "children": [self.lines(child) for child in children]}

    def menu(self):
        path = self.call("/StatusNotifierItem", "org.freedesktop.DBus.Properties", "Get",
                         GLib.Variant("(ss)", (ITEM, "Menu"))).unpack()[0]
        layout = self.call(path, MENU, "GetLayout", GLib.Variant("(iias)", (0, -1, []))).unpack()[1]
        return path, self.lines(layout)["children"]

    def obey(self, words):
        command = words[0]
        if command in ("wait", "gone"):
            self.waiting = command
            self.look()
        elif command == "there":
            self.say(bool(self.item))
        elif command == "icon":
            self.say(self.icon())
        elif command == "menu":
            self.say(self.menu()[1])
        elif command == "open":
            self.say(self.call(self.menu()[0], MENU, "AboutToShow", GLib.Variant("(i)", (0,))).unpack()[0])
        elif command == "click":
            event = GLib.Variant("(isvu)", (int(words[1]), "clicked", GLib.Variant("s", ""), 0))
            self.call(self.menu()[0], MENU, "Event", event)
            self.say(True)
        elif command == "activate":
            self.call("/StatusNotifierItem", ITEM, "Activate", GLib.Variant("(ii)", (10, 10)))
            self.say(True)
        elif command == "host":
            self.has_host = True
            self.tell("StatusNotifierHostRegistered")
            self.say(True)

    def command(self, channel, _condition):
        line = channel.readline()
        if line:
            self.obey(line.split())
        return bool(line)


bar = Bar("--without-host" not in sys.argv)
loop = GLib.MainLoop()
GLib.io_add_watch(sys.stdin, GLib.IO_IN, bar.command)
loop.run()
