"""A session without Wayland loads nothing of it."""
import os
import subprocess
import tempfile
import unittest
from pathlib import Path

from virtual_desktop import VirtualDesktop

PROGRAM = Path(os.environ["TULVANE_PROGRAM"])


class NoWaylandOnX11(unittest.TestCase):
    def test_the_program_loads_no_library_of_it(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        desktop = VirtualDesktop(folder.name, PROGRAM, sound=False)
        self.addCleanup(desktop.end)
        desktop.set(hasCompletedOnboarding=True)
        program = desktop.start(str(PROGRAM), "--background")
        desktop.wait(lambda: desktop.ask(str(PROGRAM), "status"), what="the program")
        maps = Path(f"/proc/{program.pid}/maps").read_text()
        self.assertIn("libqxcb", maps)
        self.assertNotIn("libwayland", maps)

    def test_no_executable_is_linked_against_it(self):
        for name in ("tulvane", "tulvane-commands", "tulvane-desktop"):
            loaded = subprocess.run(["ldd", PROGRAM.parent / name], capture_output=True, text=True, check=True).stdout
            self.assertNotIn("libwayland", loaded, name)


if __name__ == "__main__":
    unittest.main()
