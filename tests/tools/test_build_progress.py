#!/usr/bin/env python3
"""What is shown of a build: real Ninja, small build files."""
import os
import pty
import re
import subprocess
import tempfile
import unittest
from pathlib import Path

TOOL = Path(__file__).resolve().parents[2] / "tools" / "build-progress"


def build_file(steps, command="true"):
    rules = "rule work\n  command = $do\n  description = Building CXX object src/audio/CMakeFiles/a.dir/$out.o\n"
    return rules + "".join(f"build out{i}: work\n  do = {command}\n" for i in range(steps))


class BuildProgress(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def command(self, text, what="the program"):
        (self.folder / "build.ninja").write_text(text)
        return [TOOL, what, "ninja", "-C", self.folder]

    def run_tool(self, text):
        return subprocess.run(self.command(text), capture_output=True, text=True, timeout=60, check=False)

    def test_tells_each_tenth_where_nobody_watches(self):
        result = self.run_tool(build_file(40))
        self.assertEqual(result.returncode, 0, result.stderr)
        lines = result.stdout.splitlines()
        self.assertRegex(lines[0], r"^Building the program: \d %, step \d of 40$")
        self.assertEqual(lines[-2], "Building the program: 100 %, step 40 of 40")
        self.assertRegex(lines[-1], r"^Built the program in \d s\.$")
        self.assertLessEqual(len(lines), 12)

    def test_says_nothing_of_a_few_steps(self):
        self.assertEqual(self.run_tool(build_file(3)).stdout, "")

    def test_says_nothing_where_nothing_is_to_be_done(self):
        self.run_tool("rule work\n  command = touch $out\nbuild there: work\n")
        result = self.run_tool("rule work\n  command = touch $out\nbuild there: work\n")
        self.assertEqual((result.returncode, result.stdout), (0, ""))

    def test_tells_how_long_it_still_takes(self):
        result = self.run_tool(build_file(24, "sleep 1.2"))
        self.assertRegex(result.stdout, r"step \d+ of 24, under a minute left\n")

    def test_passes_on_what_a_step_says(self):
        result = self.run_tool(build_file(1, "echo a warning"))
        self.assertEqual(result.stdout, "a warning\n")

    def test_a_failure_keeps_its_words_and_its_status(self):
        result = self.run_tool(build_file(1, "echo wrong type; exit 3"))
        self.assertEqual(result.returncode, 1)
        self.assertIn("wrong type\n", result.stdout)
        self.assertIn("FAILED: out0", result.stdout)
        self.assertRegex(result.stdout, r"Building the program failed after \d s\.\n$")

    def test_on_a_terminal_one_line_is_renewed(self):
        master, slave = pty.openpty()
        with subprocess.Popen(self.command(build_file(5)), stdout=slave, stderr=slave) as process:
            os.close(slave)
            shown = b""
            while True:
                try:
                    part = os.read(master, 4096)
                except OSError:  # the other end is closed
                    break
                if not part:
                    break
                shown += part
        self.assertEqual(process.returncode, 0)
        text = shown.decode()
        self.assertEqual(text.count("\n"), 1)
        self.assertIn("\r\x1b[KBuilding the program: 20 %, step 1 of 5 (src/audio)", text)
        self.assertTrue(re.search(r"\r\x1b\[KBuilt the program in \d s\.\r\n$", text), repr(text))


if __name__ == "__main__":
    unittest.main()
