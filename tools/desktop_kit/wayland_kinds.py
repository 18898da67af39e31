"""How each desktop is started without a screen, and when it counts as up."""
import json
import os
import shutil
import signal
import subprocess
import time
from pathlib import Path

from wayland_desktop import WaylandDesktop
from wayland_wire import KeyPresser


class SwayDesktop(WaylandDesktop):
    NAME = "sway"
    NEEDS = {"sway": "sway", "grim": "grim"}

    def start_compositor(self, more=""):
        """`more`: lines of sway's configuration, which lies in `configuration` and can be reloaded."""
        self.configuration = self.folder / "config/sway/config"
        self.configuration.parent.mkdir(parents=True, exist_ok=True)
        display = self.folder / "run/display"
        self.configuration.write_text(
            f"xwayland {'enable' if self.x11 else 'disable'}\noutput HEADLESS-1 resolution {self.size}\n"
            f"default_border none\nfocus_on_window_activation focus\n"
            f"exec sh -c 'echo \"$DISPLAY\" > {display}'\n{more}")
        self.own()
        self.compositor = self.start_logged("compositor", "sway", "-c", str(self.configuration),
                                            WLR_BACKENDS="headless", WLR_LIBINPUT_NO_DEVICES="1",
                                            WLR_RENDERER="pixman")
        self.environment["WAYLAND_DISPLAY"] = self.wait_for_socket(self.compositor, "wayland-?", "compositor").name
        ipc = self.wait_for_socket(self.compositor, "sway-ipc*.sock", "compositor")
        self.environment["SWAYSOCK"] = str(ipc)
        self.wait(lambda: self.ask("swaymsg", "-t", "get_version"), what="sway's answer")
        if self.x11:
            self.environment["DISPLAY"] = self.wait(lambda: display.exists() and display.read_text().strip(),
                                                    what="the display for X11 programs")
        self.tell_bus()
        self.keyboard = KeyPresser(self, self.socket(), "virtual", self.layout)
        self.press(42)

    def picture(self, file):
        self.run("grim", str(self.folder / "picture.png"))
        shutil.copy(self.folder / "picture.png", file)


class KWinDesktop(WaylandDesktop):
    NAME = "KDE"
    NEEDS = {"kwin_wayland": "kwin-wayland", "/usr/share/dbus-1/services/org.kde.kglobalaccel.service": "libkf5globalaccel-bin",
             "convert": "imagemagick"}
    PERMISSIONS = "1"  # every program may press keys

    def start_compositor(self):
        config = self.folder / "config"
        (config / "kxkbrc").write_text(f"[Layout]\nLayoutList={self.layout}\nUse=true\n")
        # The packaged file carries a capability that containers lack, and then does not start; a copy carries none.
        program = self.folder / "kwin_wayland"
        shutil.copy(shutil.which("kwin_wayland"), program)
        self.own()
        width, height = self.size.split("x")
        self.environment.update(KDE_SESSION_VERSION="5", KDE_FULL_SESSION="true")
        self.compositor = self.start_logged(
            "compositor", str(program), "--virtual", "--width", width, "--height", height, "--no-lockscreen",
            "--socket", "wayland-1", *(["--xwayland"] if self.x11 else []),
            KWIN_COMPOSE="O2", KWIN_SCREENSHOT_NO_PERMISSION_CHECKS="1",
            KWIN_WAYLAND_NO_PERMISSION_CHECKS=self.PERMISSIONS)
        self.environment["WAYLAND_DISPLAY"] = self.wait_for_socket(self.compositor, "wayland-?", "compositor").name
        self.wait(lambda: self.call("org.kde.kglobalaccel", "/kglobalaccel", "org.freedesktop.DBus.Peer.Ping"),
                  what="KWin's answer")
        if self.x11:
            self.find_display()
        self.tell_bus()
        self.keyboard = self.make_keyboard()
        self.press(42)

    def make_keyboard(self):
        return KeyPresser(self, self.socket(), "fake")

    def crash_and_return(self):
        """KWin ends as in a crash, and another one starts on the same bus."""
        self.keyboard.close()
        self.compositor.kill()
        self.compositor.wait()
        for socket in (self.folder / "run").glob("wayland-?*"):
            socket.unlink()
        self.start_compositor()

    def find_display(self):
        def words():
            for process in self._descendants():
                try:
                    line = Path(f"/proc/{process}/cmdline").read_bytes().decode().split("\0")
                except OSError:
                    continue
                if line[0].endswith("Xwayland"):
                    return line
            return []
        line = self.wait(words, what="the server for X11 programs")
        self.environment["DISPLAY"] = next(word for word in line if word.startswith(":"))
        if "-auth" in line:
            self.environment["XAUTHORITY"] = line[line.index("-auth") + 1]
        # KWin and its server now and then wait for each other for ever as they start; the first X11 program would, too.
        self.run("timeout", "20", "xprop", "-root", "_NET_SUPPORTED")

    def picture(self, file):
        """KWin writes while it answers, so both are read at once: by a process that does nothing else."""
        subprocess.run(["/usr/bin/python3", str(Path(__file__).parent / "kwin_picture.py"), str(file)], check=True,
                       env=self.environment, timeout=30)


# KWin knows a program by its file; this lets the test's keyboard in, and nothing else.
KEYBOARD_ENTRY = """[Desktop Entry]
Type=Application
Name=Keyboard
Exec={program}
NoDisplay=true
X-KDE-Wayland-Interfaces=org_kde_kwin_fake_input
"""


class ClosedKWinDesktop(KWinDesktop):
    """KDE as a user has it who started the program without installing it: keys are pressed by the portal alone."""

    # The portal's part does not start without its toolkit's own part for Wayland, which its package does not ask for.
    NEEDS = {**KWinDesktop.NEEDS, "/usr/share/xdg-desktop-portal/portals/kde.portal": "xdg-desktop-portal-kde",
             "/usr/lib/*/qt5/plugins/platforms/libqwayland-generic.so": "qtwayland5"}
    PERMISSIONS = "0"

    def start_compositor(self):
        entries = self.folder / "data/applications"
        entries.mkdir(parents=True, exist_ok=True)
        (entries / "keyboard.desktop").write_text(KEYBOARD_ENTRY.format(program=os.path.realpath("/usr/bin/python3")))
        super().start_compositor()

    def make_keyboard(self):
        """Once KWin has found the file. At its start it now and then looks too early, and then not again by itself."""
        def made():
            try:
                return KeyPresser(self, self.socket(), "fake")
            except RuntimeError:
                self.ask("kbuildsycoca5", "--noincremental")
                return None
        return self.wait(made, what="a keyboard that KWin lets in", pause=0.3)


class MutterKeyboard:
    """Keys by Mutter's own service, as remote control has them."""

    NAME = "org.gnome.Mutter.RemoteDesktop"

    def __init__(self, address):
        from gi.repository import Gio, GLib
        self.GLib = GLib
        flags = Gio.DBusConnectionFlags
        self.bus = Gio.DBusConnection.new_for_address_sync(
            address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None)
        self.session = self.call("/org/gnome/Mutter/RemoteDesktop", self.NAME, "CreateSession")[0]
        self.call(self.session, self.NAME + ".Session", "Start")

    def call(self, path, interface, method, signature=None, *arguments):
        data = self.GLib.Variant(signature, arguments) if signature else None
        return self.bus.call_sync(self.NAME, path, interface, method, data, None, 0, 10000, None).unpack()

    def key(self, code, down):
        self.call(self.session, self.NAME + ".Session", "NotifyKeyboardKeycode", "(ub)", code, down)

    def close(self):
        self.bus.close_sync()


# In the shell's own language: remote control is refused while there is this file.
REFUSAL = """global.tulvaneRefusal = imports.gi.Gio.File.new_for_path("%s").monitor(0, null);
global.tulvaneRefusal.connect("changed", (monitor, file, other, event) => {
    const access = global.backend.get_remote_access_controller();
    if (event === imports.gi.Gio.FileMonitorEvent.CREATED) access.inhibit_remote_access();
    if (event === imports.gi.Gio.FileMonitorEvent.DELETED) access.uninhibit_remote_access();
});"""


class GnomeDesktop(WaylandDesktop):
    NAME = "GNOME"
    NEEDS = {"gnome-shell": "gnome-shell", "ibus-daemon": "ibus", "/usr/lib/python3/dist-packages/dbusmock":
             "python3-dbusmock", "/usr/libexec/gsd-media-keys": "gnome-settings-daemon"}
    SETTINGS = {"org.gnome.shell": {"welcome-dialog-last-shown-version": "'99'"},
                "org.gnome.desktop.interface": {"enable-animations": "false"}}

    def start_compositor(self):
        self.refusal = self.folder / "run/refuse-remote-control"
        self.start_login_manager()
        self.environment.update(XDG_SESSION_DESKTOP="gnome", XDG_SESSION_ID="c1", XDG_SEAT="seat0",
                                GNOME_SHELL_SESSION_MODE="user", WAYLAND_DISPLAY="wayland-1",
                                GSETTINGS_BACKEND="dconf")
        # Services that the bus starts early must know the display already, or the portal's part ends at once.
        self.tell_bus()
        self.run("gsettings", "set", "org.gnome.desktop.input-sources", "sources", f"[('xkb', '{self.layout}')]")
        for schema, settings in self.SETTINGS.items():
            for name, value in settings.items():
                self.run("gsettings", "set", schema, name, value)
        try:
            self.start_shell()
        except TimeoutError:
            # One start in some thirty stands still for ever.
            self.compositor.kill()
            self.compositor.wait()
            for socket in (self.folder / "run").glob("wayland-1*"):
                socket.unlink()
            self.start_shell()
        self.evaluate("Main.overview.hide()")
        if self.x11:
            for name in ["DISPLAY", "XAUTHORITY"]:
                self.environment[name] = self.evaluate(f"imports.gi.GLib.getenv('{name}')").strip('"')
        self.tell_bus()
        self.keyboard = MutterKeyboard(self.environment["DBUS_SESSION_BUS_ADDRESS"])
        self.press(42)
        # Until the input method is there the first keys into a text field are late.
        self.wait(lambda: self.processes("ibus-engine-simple"), limit=30, what="the input method")
        self.evaluate(REFUSAL % self.refusal)
        # From here on as on a user's desktop.
        self.evaluate("global.context.unsafe_mode = false")

    def start_shell(self):
        self.compositor = self.start_logged(
            "compositor", "gnome-shell", "--wayland", "--headless", "--unsafe-mode", "--virtual-monitor", self.size,
            "--wayland-display", "wayland-1", *([] if self.x11 else ["--no-x11"]))
        self.wait_for_socket(self.compositor, "wayland-1", "compositor")
        self.wait(lambda: self.evaluate("Main.layoutManager._startingUp") == "false", limit=40, what="the shell")

    def start_login_manager(self):
        self.environment.update(self.start_bus("system"))
        self.start_logged("logind", "/usr/bin/python3", "-m", "dbusmock", "--system", "--template", "logind")
        login = ["gdbus", "call", "--system", "--dest", "org.freedesktop.login1", "--object-path",
                 "/org/freedesktop/login1", "--method"]
        self.wait(lambda: self.ask(*login, "org.freedesktop.DBus.Peer.Ping"), what="the login manager")
        user = self.run("id", "-u").strip()
        self.run(*login, "org.freedesktop.DBus.Mock.AddSession", "c1", "seat0", f"uint32 {user}", "nobody", "true")

    def crash_and_return_settings_daemon(self):
        for process in self.processes("gsd-media-keys"):
            os.kill(process, signal.SIGKILL)
        self.wait(lambda: "false" in self.call("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                               "org.freedesktop.DBus.NameHasOwner",
                                               "org.gnome.SettingsDaemon.MediaKeys"), what="the settings daemon's end")
        self.start_settings_daemon()

    def start_settings_daemon(self):
        """What runs the user's own key bindings."""
        self.start_logged("media-keys", "/usr/libexec/gsd-media-keys")
        self.wait(lambda: "true" in self.call("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                              "org.freedesktop.DBus.NameHasOwner", "org.gnome.SettingsDaemon.MediaKeys"),
                  what="the settings daemon")
        time.sleep(0.5)

    HOTKEY = (29, 56, 32)  # Ctrl+Alt+D, as below

    def choose_hotkey(self):
        """As the field for a combination stores it, before the program starts: Alt+Space is the window menu's here."""
        file = self.folder / "config/com.dunio.Tulvane.json"
        settings = json.loads(file.read_text()) if file.exists() else {}
        settings["KeyboardShortcuts_dictate"] = json.dumps({"carbonKeyCode": 2, "carbonModifiers": 4096 + 2048})
        file.write_text(json.dumps(settings))
        self.own()

    def lock(self, locked):
        """What the login manager says of the screen; nothing covers it."""
        self.run("gdbus", "call", "--system", "--dest", "org.freedesktop.login1", "--object-path",
                 "/org/freedesktop/login1/session/c1", "--method", "org.freedesktop.DBus.Mock.UpdateProperties",
                 "org.freedesktop.login1.Session", "{'LockedHint': <%s>}" % str(locked).lower())

    def refuse_remote_control(self, refused):
        """As a locked-down desktop does. This keyboard is gone as long."""
        if refused:
            self.refusal.touch()
            time.sleep(0.5)
            return
        self.refusal.unlink()
        time.sleep(0.5)
        self.keyboard.close()
        self.keyboard = MutterKeyboard(self.environment["DBUS_SESSION_BUS_ADDRESS"])
        self.press(42)

    def kill_input_method(self):
        """As in a crash. The shell of this desktop starts no other."""
        for process in self.processes("ibus-daemon"):
            os.kill(process, signal.SIGKILL)

    def start_input_method(self):
        self.start_logged("input-method", "ibus-daemon", "--panel", "disable")
        self.wait(lambda: self.ask("ibus", "address"), what="the input method")

    def evaluate(self, script):
        """Of the shell's own language, while its interfaces for tests are open; nothing where it fails."""
        answer = self.call("org.gnome.Shell", "/org/gnome/Shell", "org.gnome.Shell.Eval", script)
        return answer[len("(true, '"):-len("')")] if answer.startswith("(true, '") else ""

    def picture(self, file):
        subprocess.run(["/usr/bin/python3", str(Path(__file__).parent / "gnome_picture.py"),
                        str(self.folder / "picture.png")], check=True, env=self.environment, timeout=30)
        shutil.copy(self.folder / "picture.png", file)
