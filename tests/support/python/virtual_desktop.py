"""A desktop of a test's or a measurement's own: X server, session bus, window manager and, where wanted, a sound
server, all ended with it. The program has a home of its own in `folder`."""
import json
import os
import shutil
import subprocess
import time
from pathlib import Path


class VirtualDesktop:
    def __init__(self, folder, program, sound=True, size="1280x800", keys=""):
        """`keys`: the window manager's own key bindings, in its configuration's words."""
        self.folder, self.program, self.started = Path(folder), Path(program), []
        self.environment = dict(os.environ, HOME=str(folder), XDG_DATA_HOME=str(self.folder / "data"),
                                XDG_CONFIG_HOME=str(self.folder / "config"), XDG_RUNTIME_DIR=str(self.folder / "run"),
                                XDG_SESSION_TYPE="x11", PULSE_SERVER=f"unix:{folder}/pulse", LC_ALL="C.UTF-8")
        for name in ["WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "AT_SPI_BUS_ADDRESS"]:
            self.environment.pop(name, None)
        (self.folder / "run").mkdir(mode=0o700)
        x = self.start("Xvfb", "-displayfd", "1", "-screen", "0", f"{size}x24", "-nolisten", "tcp", stdout=-1)
        self.display = ":" + x.stdout.readline().strip()
        self.environment["DISPLAY"] = self.display
        bus = self.start("dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address=1", stdout=-1)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().strip()
        # Where programs look for what the window manager uses.
        configuration = self.folder / "config/openbox/rc.xml"
        configuration.parent.mkdir(parents=True)
        configuration.write_text('<openbox_config xmlns="http://openbox.org/3.4/rc"><keyboard>' + keys +
                                 '</keyboard></openbox_config>')
        manager = self.start("openbox", "--config-file", str(configuration), "--startup", "echo ready", stdout=-1)
        manager.stdout.readline()
        if sound:
            self._start_sound()

    def _start_sound(self):
        modules = ["module-null-sink sink_name=micsink", "module-remap-source source_name=vmic master=micsink.monitor",
                   f"module-native-protocol-unix auth-anonymous=1 socket={self.folder}/pulse"]
        self.start("pulseaudio", "--daemonize=no", "--exit-idle-time=-1", "-n", "--use-pid-file=no",
                   *[word for module in modules for word in ("-L", module)])
        self.wait(lambda: (self.folder / "pulse").exists())
        self.run("pactl", "set-default-source", "vmic")

    def install_demo_model(self, model="nb-whisper-medium-q5_0"):
        """At a catalogue model's place, so that the program takes it for that."""
        models = self.folder / "data/Tulvane/Models"
        models.mkdir(parents=True, exist_ok=True)
        shutil.copy(self.program.parent.parent / "share/tulvane/models/demo.bin", models / f"{model}.bin")

    def start(self, *command, **options):
        process = subprocess.Popen(command, env=self.environment, text=True,
                                   **{"stderr": subprocess.DEVNULL, "stdout": subprocess.DEVNULL, **options})
        self.started.append(process)
        return process

    def run(self, *command):
        """What the command wrote to its standard output; it has to succeed."""
        run = subprocess.run(command, env=self.environment, capture_output=True, text=True, timeout=60)
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

    def windows(self, title):
        """The X identifiers of the visible windows with exactly this title."""
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", f"^{title}$"], env=self.environment,
                               capture_output=True, text=True)
        return found.stdout.split()

    def xdotool(self, *words):
        """What it answers; nothing where it finds nothing."""
        return subprocess.run(["xdotool", *words], env=self.environment, capture_output=True, text=True).stdout.strip()

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
    def wait(condition, limit=15, what="what was waited for"):
        """The condition's first true answer."""
        end = time.monotonic() + limit
        while True:
            answer = condition()
            if answer:
                return answer
            if time.monotonic() > end:
                raise TimeoutError(f"{what} did not come")
            time.sleep(0.02)

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
