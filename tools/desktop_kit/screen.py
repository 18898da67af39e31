"""Pictures of a virtual desktop's screen, taken from the server's own memory: one takes a millisecond or two, so that
what is to be seen for a moment only can be caught."""
import struct
import subprocess
import threading
import time


class Screen:
    def __init__(self, desktop):
        self.file = desktop.folder / "Xvfb_screen0"

    def frame(self):
        return self.file.read_bytes()

    def settled(self, limit=3):
        """A frame after which nothing changed for a moment; the last one where something moves all the time."""
        end = time.monotonic() + limit
        frame = self.frame()
        while True:
            time.sleep(0.15)
            later = self.frame()
            if later == frame or time.monotonic() > end:
                return later
            frame = later

    def brightest(self, area, seconds):
        """Of the frames of so many seconds the one with the most light in the area (x, y, width, height)."""
        frames, end = [self.frame()], time.monotonic() + seconds
        while time.monotonic() < end:
            time.sleep(0.03)
            frames.append(self.frame())
        return max(frames, key=lambda frame: self.light(frame, area))

    @staticmethod
    def light(frame, area):
        """The sum of the area's bytes, four a pixel."""
        x, y, width, height = area
        header = struct.unpack(">20I", frame[:80])
        size, line, colours = header[0], header[12], header[19]
        start = size + 12 * colours + 4 * x
        return sum(sum(frame[start + row * line:start + row * line + 4 * width]) for row in range(y, y + height))

    @staticmethod
    def save(frame, file):
        subprocess.run(["convert", "xwd:-", "-strip", str(file)], input=frame, check=True)


class LastOfPhase(threading.Thread):
    """Keeps the last frame that was taken wholly within each phase, while it runs."""

    def __init__(self, screen, phases):
        super().__init__(daemon=True)
        self.screen, self.phases, self.frames, self.ended = screen, phases, {}, threading.Event()

    def run(self):
        while not self.ended.wait(0.015):
            before = self.phases.current
            frame = self.screen.frame()
            if self.phases.current == before:
                self.frames[before] = frame

    def __enter__(self):
        self.start()
        return self

    def __exit__(self, *_):
        self.ended.set()
        self.join()
