"""The release build, installed into a folder far from the tree: nothing that it needs was left behind.

Environment: TULVANE_BUILD, the build's folder, and TULVANE_LIBRARY_FOLDER, the libraries' folder below the prefix.
"""
import atexit
import os
import subprocess
import tempfile
import unittest
from pathlib import Path

SCRATCH = tempfile.TemporaryDirectory(prefix="tulvane installed ")
atexit.register(SCRATCH.cleanup)
PREFIX = Path(SCRATCH.name).resolve() / "usr"
Path(SCRATCH.name).chmod(0o755)
subprocess.run(["cmake", "--install", os.environ["TULVANE_BUILD"], "--prefix", PREFIX], check=True,
               stdout=subprocess.DEVNULL)
os.environ["TULVANE_PROGRAM"] = str(PREFIX / "bin/tulvane")
os.environ["TULVANE_INSTALLED_LIBRARIES"] = str(PREFIX / os.environ["TULVANE_LIBRARY_FOLDER"] / "tulvane")

from installed_program import InstalledProgram  # noqa: E402 (it looks at what was installed just now)

__all__ = ["InstalledProgram"]  # its tests are run from here

if __name__ == "__main__":
    unittest.main()
