#!/usr/bin/env python3
"""tools/fetch-whisper: what it was not meant to fetch is never unpacked, and nothing is left of the attempt."""
import os
import subprocess
import tarfile
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
FETCH = ROOT / "tools/fetch-whisper"


class FetchWhisper(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.destination = self.folder / "whisper"
        tree = self.folder / "package/cpp/whisper.cpp"
        tree.mkdir(parents=True)
        (tree / "CMakeLists.txt").write_text("message(FATAL_ERROR \"foreign\")\n")
        self.archive = self.folder / "package.tgz"
        with tarfile.open(self.archive, "w:gz") as archive:
            archive.add(self.folder / "package", "package")

    def fetch(self, npm):
        """Runs it with this script in npm's place."""
        programs = self.folder / "programs"
        programs.mkdir()
        (programs / "npm").write_text(f"#!/bin/sh\n{npm}\n")
        (programs / "npm").chmod(0o755)
        return subprocess.run([FETCH, self.destination], capture_output=True, text=True,
                              env={**os.environ, "PATH": f"{programs}:{os.environ['PATH']}"})

    def left(self):
        return sorted(path.name for path in self.destination.iterdir()) if self.destination.exists() else []

    def test_an_archive_with_another_digest_is_refused_and_not_unpacked(self):
        run = self.fetch(f'cp "{self.archive}" nodejs-whisper-0.3.1.tgz')
        self.assertEqual(run.returncode, 1)
        self.assertIn("does not match its digest; nothing was unpacked", run.stderr)
        self.assertEqual((run.stdout, self.left()), ("", []))

    def test_a_download_that_fails_says_what_else_can_be_done(self):
        run = self.fetch('echo "no route" >&2; exit 1')
        self.assertEqual(run.returncode, 1)
        self.assertIn("no route", run.stderr)
        self.assertIn("TULVANE_WHISPER_SOURCE can name a local tree", run.stderr)
        self.assertEqual((run.stdout, self.left()), ("", []))

    def test_a_tree_that_is_there_is_taken_without_the_network(self):
        tree = self.destination / "whisper.cpp-1.9.1"
        tree.mkdir(parents=True)
        (tree / ".complete").touch()
        run = self.fetch("exit 1")
        self.assertEqual((run.returncode, run.stdout), (0, f"{tree}\n"))


if __name__ == "__main__":
    unittest.main()
