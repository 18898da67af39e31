"""`make install` and `make uninstall`: what the one brings, the other takes, and the user's data is neither's.

Environment: TULVANE_BUILD, the release build's folder, which is complete.
"""
import os
import subprocess
import tempfile
import unittest
from pathlib import Path

SOURCE = Path(__file__).resolve().parents[2]


class InstallAndUninstall(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="tulvane prefix ")
        self.addCleanup(folder.cleanup)
        self.prefix = Path(folder.name) / "usr local"

    def run_tool(self, name, *arguments, check=True):
        return subprocess.run([SOURCE / "tools" / name, *arguments], capture_output=True, text=True, timeout=120,
                              check=check, env={**os.environ, "PREFIX": str(self.prefix)})

    def test_nothing_stays_but_what_was_there_before(self):
        mine = self.prefix / "share/applications/mine.desktop"
        mine.parent.mkdir(parents=True)
        mine.touch()
        self.run_tool("install", os.environ["TULVANE_BUILD"])
        self.assertTrue((self.prefix / "bin/tulvane").is_file())
        self.run_tool("uninstall")
        self.assertEqual([path for path in self.prefix.rglob("*") if not path.is_dir()], [mine])
        self.assertFalse((self.prefix / "bin").exists())
        self.assertFalse((self.prefix / "lib").exists())

    def test_it_says_when_there_is_nothing_to_take_away(self):
        run = self.run_tool("uninstall", check=False)
        self.assertEqual(run.returncode, 1)
        self.assertIn("nothing of Tulvane is installed", run.stderr)


if __name__ == "__main__":
    unittest.main()
