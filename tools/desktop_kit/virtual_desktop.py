"""A desktop of a test's or a measurement's own: X server, session bus, window manager and, where wanted, a sound
server, all ended with it. The program has a home of its own in `folder`."""
import json
import os
import shutil
import signal
import subprocess
import time
from pathlib import Path

from sound_server import start_sound_server


class VirtualDesktop:
    def __init__(self, folder, program, sound=True, size="1280x800", window_manager="", keys=""):
        """`sound`: whether there is a sound server, or its name. `window_manager`: what stands in openbox's
        configuration, and `keys`: its own key bindings, both in its words. Themes lie in `folder`/data/themes."""
        self.folder, self.program, self.started = Path(folder), Path(program), []
        self.environment = dict(os.environ, HOME=str(folder), XDG_DATA_HOME=str(self.folder / "data"),
                                XDG_CONFIG_HOME=str(self.folder / "config"), XDG_RUNTIME_DIR=str(self.folder / "run"),
                                XDG_SESSION_TYPE="x11", PULSE_SERVER="unix:/nonexistent", LC_ALL="C.UTF-8")
        for name in ["WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "AT_SPI_BUS_ADDRESS", "NO_AT_BRIDGE", "GTK_THEME",
                     "SESSION_MANAGER", "XDG_SESSION_ID", "QT_STYLE_OVERRIDE", "QT_QPA_PLATFORMTHEME", "QT_IM_MODULE",
                     "GTK_IM_MODULE", "XMODIFIERS", "GTK_MODULES", "PIPEWIRE_REMOTE", "PIPEWIRE_RUNTIME_DIR",
                     "PULSE_RUNTIME_PATH"]:
            self.environment.pop(name, None)
        (self.folder / "run").mkdir(mode=0o700)
        self.as_user = ["setpriv", "--pdeathsig", "TERM"]
        try:
            self._start_desktop(size, window_manager, keys)
            if sound:
                start_sound_server(self, None if sound is True else sound)
        except BaseException:
            self.end()
            raise

    def _start_desktop(self, size, window_manager, keys):
        x = self.start("Xvfb", "-displayfd", "1", "-screen", "0", f"{size}x24", "-nolisten", "tcp",
                       "-fbdir", str(self.folder), stdout=-1)
        self.display = ":" + x.stdout.readline().strip()
        self.environment["DISPLAY"] = self.display
        bus = self.start("dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address=1", stdout=-1)
        address = bus.stdout.readline().strip()
        # The machine's own login manager has no say here.
        self.environment.update(DBUS_SESSION_BUS_ADDRESS=address, DBUS_SYSTEM_BUS_ADDRESS=address)
        # Where programs look for what the window manager uses.
        configuration = self.folder / "config/openbox/rc.xml"
        configuration.parent.mkdir(parents=True, exist_ok=True)
        configuration.write_text('<openbox_config xmlns="http://openbox.org/3.4/rc">'
                                 f"<keyboard>{keys}</keyboard>{window_manager}</openbox_config>")
        manager = self.start("openbox", "--config-file", str(configuration), "--startup", "echo ready", stdout=-1)
        manager.stdout.readline()

    def install_demo_model(self, model="nb-whisper-medium-q5_0"):
        """At a catalogue model's place, so that the program takes it for that. It is there all at once, as a download
        is, so that a running program never sees half of it."""
        models = self.folder / "data/Tulvane/Models"
        models.mkdir(parents=True, exist_ok=True)
        partial = models.parent / "demo.partial"
        shutil.copy(self.program.parent.parent / "share/tulvane/models/demo.bin", partial)
        partial.rename(models / f"{model}.bin")

    def start(self, *command, **options):
        """In a session of its own: Ctrl+C in a terminal reaches us alone, and we end everything in its order. Should
        we be killed, the kernel ends what we started."""
        process = subprocess.Popen([*self.as_user, *command], env=self.environment, text=True,
                                   start_new_session=True,
                                   **{"stderr": subprocess.DEVNULL, "stdout": subprocess.DEVNULL, **options})
        self.started.append(process)
        return process

    def run(self, *command):
        """What the command wrote to its standard output; it has to succeed."""
        run = subprocess.run([*self.as_user, *command], env=self.environment, capture_output=True, text=True, timeout=60)
        if run.returncode != 0:
            raise RuntimeError(f"{command[0]} ended with {run.returncode}: {run.stderr.strip()}")
        return run.stdout

    def tulvane(self, *words):
        return self.run(str(self.program), *words)

    def set(self, **settings):
        """Settings as the command line writes them, before or while the program runs."""
        for key, value in settings.items():
            self.tulvane("settings", "set", key, str(value).lower() if isinstance(value, bool) else str(value))

    def stored(self, key):
        """What stands in the settings file; None where nothing does."""
        file = self.folder / "config/com.dunio.Tulvane.json"
        return json.loads(file.read_text()).get(key) if file.exists() else None

    def status(self):
        return json.loads(self.tulvane("status", "--json"))

    def ask(self, *command):
        """The same of a command that fails where there is nothing to find."""
        return subprocess.run([*self.as_user, *command], env=self.environment, capture_output=True, text=True, timeout=60).stdout

    def windows(self, title):
        """The X identifiers of the visible windows with exactly this title."""
        return self.xdotool("search", "--onlyvisible", "--name", f"^{title}$").split()

    def xdotool(self, *words):
        """What it answers; nothing where it finds nothing."""
        return self.ask("xdotool", *words).strip()

    def key(self, *names):
        """Keys and combinations, pressed and released one after the other as on a keyboard."""
        for name in names:
            self.xdotool("key", name)

    def speak(self, sentence):
        """Into the microphone; returns when all of it has been heard."""
        sound = self.folder / "spoken.wav"
        self.run("espeak-ng", "-v", "nb", "-w", str(sound), sentence)
        self.run("paplay", "--device=micsink", str(sound))
        time.sleep(0.5)  # what was played last is still on its way through the server's buffers

    def wait_for_phase(self, *phases):
        return self.wait(lambda: self.status()["phase"] in phases, what=" or ".join(phases))

    @staticmethod
    def wait(condition, limit=15, what="what was waited for", pause=0.02):
        """The condition's first true answer, asked for every `pause` seconds."""
        end = time.monotonic() + limit
        while True:
            answer = condition()
            if answer:
                return answer
            if time.monotonic() > end:
                raise TimeoutError(f"{what} did not come")
            time.sleep(pause)

    def picture(self, file):
        self.run("import", "-window", "root", str(file))

    def end(self):
        for process in reversed(self.started):
            process.terminate()
            try:
                process.wait(5)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
        self._end_descendants()

    def _end_descendants(self):
        """What the session bus started for others, such as the accessibility bus, or the program for itself."""
        for number in self._descendants():
            self._signal(number, signal.SIGTERM)
        end = time.monotonic() + 3
        while self._descendants() and time.monotonic() < end:
            time.sleep(0.02)
        for number in self._descendants():
            self._signal(number, signal.SIGKILL)

    def _descendants(self):
        """Every process that lives in our home."""
        mark = f"XDG_RUNTIME_DIR={self.folder}/run".encode()
        found = []
        for folder in Path("/proc").glob("[0-9]*"):
            try:
                if int(folder.name) != os.getpid() and mark in (folder / "environ").read_bytes().split(b"\0"):
                    found.append(int(folder.name))
            except OSError:  # somebody else's, or gone meanwhile
                pass
        return found

    @staticmethod
    def _signal(number, which):
        try:
            os.kill(number, which)
        except ProcessLookupError:
            pass
