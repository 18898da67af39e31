"""A sound server of a virtual desktop's own, with speakers that nobody hears and a microphone that hears what is played
into it. PulseAudio or PipeWire, whichever is installed: the other one would silence the machine of a person who has
this one."""
import shutil

SERVERS = {"pulseaudio": ["pulseaudio"], "pipewire": ["pipewire", "pipewire-pulse", "wireplumber"]}
# The program's own sounds go to the speakers; on the default sink's monitor the microphone would hear them. Without
# "norewinds" PulseAudio renders seconds ahead, and what is played is heard that much later.
SINKS = ["module-null-sink sink_name=speakers", "module-null-sink sink_name=micsink{}",
         "module-remap-source source_name=vmic master=micsink.monitor"]


def installed_server():
    """Its name in `SERVERS`; PipeWire's where there is neither, since that is what desktops have today."""
    for name, programs in SERVERS.items():
        if all(map(shutil.which, programs)):
            return name
    return "pipewire" if shutil.which("pipewire-pulse") else "pulseaudio"


def needed_programs():
    return [*SERVERS[installed_server()], "pactl", "paplay"]


def start_sound_server(desktop, name=None):
    """Starts it in the desktop's session and sets PULSE_SERVER there; ready when this returns."""
    name = name or installed_server()
    if name == "pulseaudio":
        socket = desktop.folder / "pulse"
        modules = [module.format(" norewinds=1") for module in SINKS]
        modules.append(f"module-native-protocol-unix auth-anonymous=1 socket={socket}")
        desktop.environment["PULSE_SERVER"] = f"unix:{socket}"
        desktop.start("pulseaudio", "--daemonize=no", "--exit-idle-time=-1", "-n", "--use-pid-file=no",
                      *[word for module in modules for word in ("-L", module)])
        desktop.wait(socket.exists)
    else:
        runtime = desktop.folder / "run"
        desktop.environment["PULSE_SERVER"] = f"unix:{runtime}/pulse/native"
        desktop.start("pipewire")
        desktop.wait((runtime / "pipewire-0").exists)
        desktop.start("wireplumber")
        desktop.start("pipewire-pulse")
        desktop.wait((runtime / "pulse/native").exists)
        for module in SINKS:
            desktop.run("pactl", "load-module", *module.format("").split())

    def is_default():
        # PipeWire's session manager forgets a request that comes while it is busy.
        desktop.ask("pactl", "set-default-source", "vmic")
        desktop.ask("pactl", "set-default-sink", "speakers")
        told = desktop.ask("pactl", "info")
        return "Default Source: vmic\n" in told and "Default Sink: speakers\n" in told

    desktop.wait(is_default)
