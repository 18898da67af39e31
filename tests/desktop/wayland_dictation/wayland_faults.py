"""What goes wrong around a dictation on a Wayland desktop: the real program, real keys and real neighbours."""
import os
import signal
import subprocess
import time

from wayland_dictation import ALT, CONTROL, PROGRAM, SENTENCE, SHIFT, SPACE, TARGETS, Field, WaylandDictation

LOCKER = """
import sys
from gi.repository import Gio, GLib
XML = '''<node><interface name="org.gnome.ScreenSaver"><method name="GetActive"><arg type="b" direction="out"/></method>
<signal name="ActiveChanged"><arg type="b"/></signal></interface></node>'''
bus, active = Gio.bus_get_sync(Gio.BusType.SESSION), True
bus.register_object("/org/gnome/ScreenSaver", Gio.DBusNodeInfo.new_for_xml(XML).interfaces[0],
                    lambda *call: call[-1].return_value(GLib.Variant("(b)", (True,))))
Gio.bus_own_name_on_connection(bus, "org.gnome.ScreenSaver", 0)
def tell(value):
    bus.emit_signal(None, "/org/gnome/ScreenSaver", "org.gnome.ScreenSaver", "ActiveChanged",
                    GLib.Variant("(b)", (value,)))
GLib.timeout_add(300, lambda: tell(True))
loop = GLib.MainLoop()
GLib.io_add_watch(sys.stdin.fileno(), GLib.IO_HUP, lambda *_: (tell(False), bus.flush_sync(), loop.quit()))
loop.run()
"""


class WaylandFaults(WaylandDictation):
    """Its programs are those of the dictations; each test leaves all as it found it."""

    def field(self):
        field = Field(self.desktop, "/usr/bin/python3", str(TARGETS / "gtk_target.py"), "view")
        self.addCleanup(self.ended, field)
        return field

    @staticmethod
    def ended(field):
        if field.process.poll() is None:
            field.end()

    def doctor(self):
        return self.desktop.ask(str(PROGRAM), "doctor")

    def test_an_editor_that_closes_before_the_paste_leaves_the_text_on_the_clipboard(self):
        field = self.field()
        self.hold_and_then(field.process.kill)
        self.desktop.wait_for_phase("notice", "idle")
        self.desktop.wait(lambda: self.paste().decode().strip() == SENTENCE, what="the text on the clipboard")
        self.desktop.wait_for_phase("idle")
        self.dictate_into(self.field())

    def hold_and_then(self, act):
        """A whole dictation; `act` comes right after the key is up."""
        self.desktop.down(ALT, SPACE)
        try:
            self.desktop.wait_for_phase("recording")
            self.desktop.run("paplay", "--device=micsink", str(self.sound))
        finally:
            self.desktop.up(SPACE, ALT)
        act()

    def test_a_modifier_that_is_held_spoils_nothing(self):
        for held in (SHIFT, CONTROL):
            field = self.field()
            self.hold_and_then(lambda key=held: self.desktop.down(key))
            try:
                self.desktop.wait(lambda field=field: field.text() or self.phase() in ("notice", "error"), limit=60,
                                  what="the text")
            finally:
                self.desktop.up(held)
            # The field shows what it has of a paste before it has all of it.
            self.desktop.wait_for_phase("idle", "notice", "error")
            self.assertEqual(field.text(), SENTENCE + " ", self.said())
            self.desktop.wait_for_phase("idle")
            self.ended(field)

    def test_nothing_starts_while_the_screen_is_locked(self):
        field = self.field()
        locker = self.desktop.start("/usr/bin/python3", "-c", LOCKER, stdin=subprocess.PIPE)
        self.addCleanup(locker.kill)
        self.desktop.wait(lambda: self.desktop.status()["locked"], what="the lock")
        self.desktop.down(ALT, SPACE)
        time.sleep(0.5)
        phase = self.phase()
        self.desktop.up(SPACE, ALT)
        self.assertNotEqual(phase, "recording")
        locker.stdin.close()
        self.desktop.wait(lambda: not self.desktop.status()["locked"], what="the end of the lock")
        self.desktop.wait_for_phase("idle")
        self.assertEqual(field.text(), "")
        self.dictate_into(field)

    def test_when_the_compositor_goes_the_program_ends(self):
        """The last of them by its name: nothing works afterwards."""
        def one_alone():
            running = [process for process in self.desktop._descendants() if self.name_of(process) == "tulvane-desktop"]
            return running[0] if len(running) == 1 else None
        # A process that is about to become another program still has the name of the one that starts it.
        program = self.desktop.wait(one_alone, what="the program alone")
        self.desktop.keyboard.close()
        type(self).desktop.keyboard = None
        os.kill(self.desktop.compositor.pid, signal.SIGKILL)
        self.desktop.wait(lambda: self.name_of(program) != "tulvane-desktop", what="the program's end")
        self.assertNotIn("terminate called", self.said())

    @staticmethod
    def name_of(process):
        try:
            with open(f"/proc/{process}/cmdline", "rb") as file:
                return os.path.basename(file.read().split(b"\0")[0].decode())
        except OSError:
            return ""


for _name in [name for name in dir(WaylandDictation) if name.startswith("test_")]:
    setattr(WaylandFaults, _name, None)  # those are the other suites'
