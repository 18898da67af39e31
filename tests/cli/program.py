"""Runs the program in a home of its own and speaks sentences for it."""
import os
import subprocess
import tempfile
import unittest
from pathlib import Path

PROGRAM = os.environ["TULVANE_PROGRAM"]
SOAK = os.environ.get("TULVANE_SOAK", "0") != "0"
# A sanitizer reserves terabytes of address space, so a limit on it means nothing there.
SANITIZED = b"__sanitizer" in Path(PROGRAM).read_bytes()


class ProgramTest(unittest.TestCase):
    """Each test has a scratch home, so that no setting or model of the person running it plays a part."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.environment = {**os.environ, "XDG_CONFIG_HOME": str(self.folder / "config"),
                            "XDG_DATA_HOME": str(self.folder / "data"), "HOME": str(self.folder)}

    def run_program(self, *arguments, given=None, timeout=120, through=(), **options):
        """Runs to the end, started by the command `through` where there is one; output and messages are text."""
        return subprocess.run([*through, PROGRAM, *map(str, arguments)], input=given, capture_output=True, text=True,
                              timeout=timeout, env=self.environment, **options)

    def assert_fails(self, run, status, *pieces):
        """One clear line on standard error, nothing on standard output, the right status."""
        self.assertEqual(run.returncode, status, run.stderr)
        self.assertEqual(run.stdout, "")
        lines = run.stderr.splitlines()
        self.assertEqual(len(lines), 1, run.stderr)
        for piece in pieces:
            self.assertIn(piece, lines[0])

    def speak(self, text, voice="nb", name="spoken.wav"):
        path = self.folder / name
        subprocess.run(["espeak-ng", "-v", voice, "-w", path, text], check=True, stderr=subprocess.DEVNULL)
        return path

    def convert(self, source, name, *effects):
        path = self.folder / name
        subprocess.run(["sox", source, *effects, path], check=True, stderr=subprocess.DEVNULL)
        return path
