#!/usr/bin/python3
"""A Wayland desktop of a test's own, without a screen: the compositor, its buses, a keyboard that is not ours, pictures.

    wayland_desktop.py sway|kwin|gnome FOLDER [--x11] [--sound] [--layout NAME]
    wayland_desktop.py sway|kwin|gnome --missing              names the packages that it lacks here, one a line

FOLDER, which is made, becomes the home of everything in it. Where root starts it, compositor and programs run as a user
without rights, since none of the three runs as root. What happens is told on standard output, a line of JSON each:
    {"event": "ready", "environment": {...}, "user": NUMBER}      programs started with this environment are in it
    {"event": "failed", "reason": "..."}
Requests come on standard input, each with an id that its answer repeats:
    {"do": "press", "keys": [56, 57]}       the kernel's numbers of keys: down in this order, up in the other
    {"do": "down", "keys": [...]}, {"do": "up", "keys": [...]}
    {"do": "picture", "file": "..."}        of the whole screen
    {"do": "run", "command": [...]}         its output, or what it complained about
    {"do": "stop"}                          as does the end of the input
However it ends, everything that it started ends with it.
"""
import argparse
import ctypes
import json
import os
import pwd
import shutil
import signal
import sys
import time
from pathlib import Path

from virtual_desktop import VirtualDesktop

NOBODY = 65534
PR_SET_CHILD_SUBREAPER = 36
KEYS = {"shift": 42, "ctrl": 29, "alt": 56, "super": 125, "space": 57, "escape": 1, "return": 28, "tab": 15,
        "backspace": 14, "insert": 110, **{f"f{number}": 58 + number for number in range(1, 11)},
        **dict(zip("qwertyuiop", range(16, 26))), **dict(zip("asdfghjkl", range(30, 39))),
        **dict(zip("zxcvbnm", range(44, 51)))}
BUS = """<busconfig><type>{kind}</type><listen>unix:path={folder}/run/{name}</listen>
<standard_session_servicedirs/><policy context="default"><allow user="*"/><allow own="*"/>
<allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/></policy></busconfig>
"""


class WaylandDesktop(VirtualDesktop):
    """What the three kinds share; `desktop_of` makes one. `layout` is the keyboard's."""

    NEEDS = {}  # a program or a path (a pattern), and the package that it comes in
    NAME = ""

    def __init__(self, folder, program="", sound=False, size="1280x720", layout="no", x11=False):
        self.layout, self.x11, self.keyboard, self.size = layout, x11, None, size
        super().__init__(folder, program, sound, size)

    @classmethod
    def missing(cls):
        """The packages that this desktop lacks on this machine."""
        needs = {"setpriv": "util-linux", "dbus-daemon": "dbus-daemon", "gdbus": "libglib2.0-bin", **cls.NEEDS}
        absent = [package for file, package in needs.items()
                  if not (any(Path("/").glob(file[1:])) if file.startswith("/") else shutil.which(file))]
        return sorted(set(absent))

    def _start_desktop(self, size, window_manager, keys):
        for name in ["DISPLAY", "XAUTHORITY", "SWAYSOCK", "DESKTOP_STARTUP_ID", "INVOCATION_ID"]:
            self.environment.pop(name, None)
        self.environment.update(XDG_SESSION_TYPE="wayland", XDG_CURRENT_DESKTOP=self.NAME, LANG="C.UTF-8",
                                XDG_CACHE_HOME=str(self.folder / "cache"), QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        if os.getuid() == 0:
            user = pwd.getpwuid(NOBODY)
            self.as_user = [*self.as_user, f"--reuid={NOBODY}", f"--regid={user.pw_gid}", "--clear-groups"]
            self.environment.update(USER=user.pw_name, LOGNAME=user.pw_name, SHELL="/bin/sh")
        for name in ["config", "data", "cache"]:
            (self.folder / name).mkdir(exist_ok=True)
        self.own()
        self.environment.update(self.start_bus("session"))
        # The machine's own login manager has no say here.
        self.environment["DBUS_SYSTEM_BUS_ADDRESS"] = self.environment["DBUS_SESSION_BUS_ADDRESS"]
        self.start_compositor()
        self.own()

    def start_compositor(self):
        raise NotImplementedError

    def own(self):
        """What root has written into the folder becomes the user's."""
        if os.getuid() != 0:
            return
        for place, folders, files in os.walk(self.folder):
            for name in [place, *(os.path.join(place, file) for file in folders + files)]:
                try:
                    os.lchown(name, NOBODY, -1)
                except FileNotFoundError:
                    pass

    def start_bus(self, kind):
        name = f"{kind}-bus"
        configuration = self.folder / f"{name}.conf"
        configuration.write_text(BUS.format(kind=kind, folder=self.folder, name=name))
        self.start("dbus-daemon", f"--config-file={configuration}", "--nofork", "--nopidfile")
        path = self.folder / "run" / name
        self.wait(path.exists, what=f"the {kind} bus")
        return {f"DBUS_{kind.upper()}_BUS_ADDRESS": f"unix:path={path}"}

    def start_logged(self, name, *command, **more):
        """A program whose complaints lie in a file; RuntimeError from `alive` has their end."""
        with open(self.folder / f"{name}.log", "w") as log:
            environment, self.environment = self.environment, dict(self.environment, **more)
            try:
                return self.start(*command, stdout=log, stderr=log)
            finally:
                self.environment = environment

    def wait_for_socket(self, process, name, log):
        def there():
            if process.poll() is not None:
                raise RuntimeError(f"{self.NAME} ended: " + (self.folder / f"{log}.log").read_text()[-2000:])
            return list((self.folder / "run").glob(name))
        found = self.wait(lambda: [path for path in there() if path.is_socket()], limit=30, what=f"{self.NAME}'s socket")
        return found[0]

    def socket(self):
        return str(self.folder / "run" / self.environment["WAYLAND_DISPLAY"])

    def tell_bus(self):
        """Services that the bus starts know this desktop from now on."""
        names = ["WAYLAND_DISPLAY", "DISPLAY", "XAUTHORITY", "XDG_CURRENT_DESKTOP", "XDG_RUNTIME_DIR", "SWAYSOCK",
                 "XDG_SESSION_TYPE", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"]
        self.run("dbus-update-activation-environment", *[name for name in names if name in self.environment])

    def call(self, destination, path, method, *arguments):
        """gdbus's words for an answer; nothing where there is none."""
        return self.ask("gdbus", "call", "--session", "--timeout", "10", "--dest", destination, "--object-path", path,
                        "--method", method, *arguments).strip()

    def processes(self, name):
        """The numbers of the desktop's processes whose program is called so."""
        def command(process):
            try:
                return Path(f"/proc/{process}/cmdline").read_bytes().split(b"\0")[0].decode()
            except OSError:
                return ""
        return [process for process in self._descendants() if os.path.basename(command(process)) == name]

    def down(self, *codes):
        for code in codes:
            self.keyboard.key(code, True)
            time.sleep(0.01)

    def up(self, *codes):
        for code in codes:
            self.keyboard.key(code, False)
            time.sleep(0.01)

    def press(self, *codes):
        self.down(*codes)
        self.up(*reversed(codes))

    def key(self, *names):
        """ "alt+space": one combination after the other."""
        for name in names:
            self.press(*[KEYS[part] for part in name.lower().split("+")])

    def end(self):
        if self.keyboard:
            try:
                self.keyboard.close()
            except Exception:  # whatever it says, the rest has to end too
                pass
        super().end()


def desktop_of(kind):
    from wayland_kinds import ClosedKWinDesktop, GnomeDesktop, KWinDesktop, SwayDesktop
    return {"sway": SwayDesktop, "kwin": KWinDesktop, "kwin-closed": ClosedKWinDesktop, "gnome": GnomeDesktop}[kind]


def say(message):
    sys.stdout.write(json.dumps(message) + "\n")
    sys.stdout.flush()


def answer(desktop, request):
    do = request["do"]
    if do in ("press", "down", "up"):
        getattr(desktop, do)(*request["keys"])
    elif do == "picture":
        desktop.picture(request["file"])
    elif do == "run":
        return {"output": desktop.run(*request["command"])}
    elif do == "do":  # whatever else a kind can
        return {"output": getattr(desktop, request["what"])(*request.get("with", []))}
    return {}


def serve(desktop):
    for line in sys.stdin:
        request = json.loads(line)
        if request["do"] == "stop":
            desktop.end()
            say({"id": request["id"], "ok": True})
            return
        try:
            say({"id": request["id"], "ok": True, **answer(desktop, request)})
        except Exception as problem:
            say({"id": request["id"], "ok": False, "reason": str(problem)})


def show(arguments):
    kind = desktop_of(arguments.kind)
    Path(arguments.folder).mkdir(parents=True, exist_ok=True)
    os.chmod(arguments.folder, 0o755)
    desktop = None
    try:
        desktop = kind(arguments.folder, sound=arguments.sound, layout=arguments.layout, x11=arguments.x11)
        say({"event": "ready", "environment": desktop.environment, "user": NOBODY if os.getuid() == 0 else os.getuid()})
        serve(desktop)
    except Exception as problem:
        say({"event": "failed", "reason": str(problem)})
        return 1
    finally:
        if desktop:
            desktop.end()
    return 0


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("kind", choices=["sway", "kwin", "kwin-closed", "gnome"])
    parser.add_argument("folder", nargs="?")
    parser.add_argument("--missing", action="store_true")
    parser.add_argument("--x11", action="store_true", help="with a server for X11 programs")
    parser.add_argument("--sound", action="store_true", help="with a sound server")
    parser.add_argument("--layout", default="no")
    arguments = parser.parse_args()
    if arguments.missing:
        print("\n".join(desktop_of(arguments.kind).missing()))
        return
    for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
        signal.signal(number, lambda *_: sys.exit(1))
    # One process serves; the other ends what is left should that one be killed, and takes in what loses its parent.
    ctypes.CDLL(None).prctl(PR_SET_CHILD_SUBREAPER, 1)
    child = os.fork()
    if child == 0:
        sys.exit(show(arguments))
    os.close(0)
    status = wait_for(child)
    left = VirtualDesktop.__new__(WaylandDesktop)
    left.folder = Path(arguments.folder)
    left._end_descendants()
    sys.exit(status)


def wait_for(child):
    """Its exit status, whatever signals come meanwhile: they are passed on."""
    while True:
        try:
            process, status = os.wait()
            if process == child:
                return os.waitstatus_to_exitcode(status) & 0xFF
        except SystemExit:
            os.kill(child, signal.SIGTERM)


if __name__ == "__main__":
    main()
