"""What the measurements of the running program share: its log and its target's text line by line with the moment of
each, keys at the level of the device, and what a process costs."""
import os
import queue
import sys
import threading
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tools/desktop_kit"))
from keyboard import ALT, SPACE, Keyboard  # noqa: E402
from phases import Phases  # noqa: E402
from virtual_desktop import VirtualDesktop  # noqa: E402

# The measurements take from here what they need of the desktop kit.
__all__ = ["ALT", "ROOT", "SPACE", "Keyboard", "Lines", "Phases", "VirtualDesktop", "figures", "measure_idle", "memory"]


class Lines:
    """A process's output, each line with the moment at which it came."""

    def __init__(self, stream):
        self.waiting = queue.Queue()
        threading.Thread(target=self._read, args=(stream,), daemon=True).start()

    def _read(self, stream):
        for line in stream:
            self.waiting.put((time.monotonic(), line.strip()))

    def forget(self):
        """What has come so far."""
        while not self.waiting.empty():
            self.waiting.get_nowait()

    def until(self, text, limit=20):
        """The moment of the next line that holds this text."""
        return self.find(text, limit)[0]

    def find(self, text, limit=20):
        """The moment and the words of the next line that holds this text."""
        end = time.monotonic() + limit
        while True:
            moment, line = self.waiting.get(timeout=max(0.01, end - time.monotonic()))
            if text in line:
                return moment, line


def figures(process):
    """Processor seconds of all threads so far, and the wake-ups of each thread that is there."""
    wakes = {}
    for task in Path(f"/proc/{process}/task").iterdir():
        for line in (task / "status").read_text().splitlines():
            if line.startswith("voluntary_ctxt_switches"):
                wakes[task.name] = int(line.split()[1])
    fields = Path(f"/proc/{process}/stat").read_text().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK"), wakes

def wakes_between(before, after):
    """Of the threads that are there at the end: what one that has ended did is not known."""
    return sum(count - before.get(thread, 0) for thread, count in after.items())

def memory(process):
    """Megabytes: resident, proportional (shared pages divided by those that share them) and private."""
    amounts = {"Rss": 0, "Pss": 0, "Private_Dirty": 0}
    for line in Path(f"/proc/{process}/smaps_rollup").read_text().splitlines():
        name = line.split(":")[0]
        if name in amounts:
            amounts[name] = int(line.split()[1]) / 1024
    return amounts


def measure_idle(process, seconds):
    time.sleep(3)
    cpu, wakes = figures(process)
    time.sleep(seconds)
    later_cpu, later_wakes = figures(process)
    print(f"| idle for {seconds} s | {1000 * (later_cpu - cpu):.0f} ms of processor time, "
          f"{wakes_between(wakes, later_wakes) * 60 / seconds:.1f} wake-ups a minute |")
