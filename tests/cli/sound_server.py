"""A sound server of the test's own, with a virtual microphone that hears what is played into it."""
import os
import subprocess
import time

CONFIGURATION = """
load-module module-native-protocol-unix auth-anonymous=1 socket={socket}
load-module module-null-sink norewinds=1 sink_name=micsink rate=48000
load-module module-null-sink sink_name=speakers
load-module module-remap-source source_name=vmic master=micsink.monitor
set-default-sink speakers
set-default-source vmic
"""


class SoundServer:
    """Use with `with`; `environment` is what its clients need."""

    def __init__(self, folder):
        self.folder = folder
        self.socket = folder / "pulse.socket"
        self.environment = {"PULSE_SERVER": f"unix:{self.socket}"}

    def __enter__(self):
        script = self.folder / "pulse.pa"
        script.write_text(CONFIGURATION.format(socket=self.socket))
        runtime = self.folder / "runtime"
        runtime.mkdir(mode=0o700)
        environment = {**os.environ, "XDG_RUNTIME_DIR": str(runtime), "HOME": str(self.folder),
                       "XDG_CONFIG_HOME": str(self.folder), "DBUS_SESSION_BUS_ADDRESS": "disabled:"}
        self.process = subprocess.Popen(
            ["pulseaudio", "-n", "-F", script, "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no"],
            env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        deadline = time.monotonic() + 20
        while self.ask("info").returncode != 0:
            if time.monotonic() > deadline or self.process.poll() is not None:
                raise RuntimeError("the sound server did not start")
            time.sleep(0.05)
        return self

    def __exit__(self, *_):
        self.process.kill()
        self.process.wait()

    def ask(self, *words):
        return subprocess.run(["pactl", *words], env={**os.environ, **self.environment}, capture_output=True,
                              text=True)

    def play(self, path):
        """Speaks a sound file into the microphone, to its end."""
        subprocess.run(["paplay", "--device=micsink", path], env={**os.environ, **self.environment}, check=True)

    def wait_for_recording(self, timeout=20):
        """Until some program has the microphone open."""
        deadline = time.monotonic() + timeout
        while not self.ask("list", "short", "source-outputs").stdout.strip():
            if time.monotonic() > deadline:
                raise RuntimeError("nobody opened the microphone")
            time.sleep(0.02)
