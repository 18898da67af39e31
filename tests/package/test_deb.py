#!/usr/bin/env python3
"""The Debian package, looked into and run out of a scratch folder.

    test_deb.py PACKAGE.deb     the environment as in test_installed.py
"""
import atexit
import gzip
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

DEB = Path(sys.argv.pop(1)).resolve()
SCRATCH = tempfile.TemporaryDirectory(prefix="tulvane package ")
atexit.register(SCRATCH.cleanup)
ROOT = Path(SCRATCH.name).resolve()
ROOT.chmod(0o755)
subprocess.run(["dpkg-deb", "--extract", DEB, ROOT], check=True)
LIBRARIES = next(ROOT.glob("usr/lib/*/tulvane"))
os.environ["TULVANE_PROGRAM"] = str(ROOT / "usr/bin/tulvane")
os.environ["TULVANE_INSTALLED_LIBRARIES"] = str(LIBRARIES)

from elf import is_elf, sections  # noqa: E402
from installed_program import DEMO, FORBIDDEN, PROGRAM, SAID, InstalledProgram, InstalledTest  # noqa: E402

__all__ = ["InstalledProgram"]  # its tests are run from here

FILES = re.compile(r"""usr/(
    bin/tulvane(-commands|-compute|-transfers|-desktop)?
  | lib/[^/]+/tulvane/lib(whisper\.so\.1|ggml\.so\.0|ggml-base\.so\.0)(\.[0-9.]+)?
  | lib/[^/]+/tulvane/libtulvane-desktop\.so
  | lib/[^/]+/tulvane/devices/libggml-vulkan\.so
  | lib/[^/]+/tulvane/libggml-cpu-[a-z0-9_.]+\.so
  | share/applications/com\.dunio\.Tulvane(\.(desktop|commands))?\.desktop
  | share/tulvane/udev/70-tulvane-keyboards\.rules
  | share/metainfo/com\.dunio\.Tulvane\.metainfo\.xml
  | share/icons/hicolor/(scalable|symbolic)/apps/com\.dunio\.Tulvane(-symbolic)?\.svg
  | share/doc/tulvane/(copyright|changelog\.gz|changelog\.Debian\.gz)
  | share/man/man1/tulvane\.1\.gz
  | share/(bash-completion/completions/tulvane|zsh/site-functions/_tulvane|fish/vendor_completions\.d/tulvane\.fish)
  | share/tulvane/(help/permissions\.html|models/demo\.bin|speech/(nb|en)\.wav)
)""", re.VERBOSE)


def files():
    return [path for path in ROOT.rglob("*") if path.is_file() and not path.is_symlink()]


def field(name):
    return subprocess.run(["dpkg-deb", "--field", DEB, name], capture_output=True, text=True,
                          check=True).stdout.strip()


class Contents(unittest.TestCase):
    def test_it_holds_what_belongs_to_it_and_nothing_else(self):
        for path in ROOT.rglob("*"):
            if not path.is_dir():
                self.assertRegex(str(path.relative_to(ROOT)), FILES)
        for name in ("bin/tulvane", "bin/tulvane-commands", "bin/tulvane-compute", "bin/tulvane-desktop", "bin/tulvane-transfers",
                     "share/doc/tulvane/changelog.Debian.gz", "share/man/man1/tulvane.1.gz",
                     "share/bash-completion/completions/tulvane", "share/tulvane/models/demo.bin"):
            self.assertTrue((ROOT / "usr" / name).is_file(), name)

    def test_everything_is_roots_and_readable_and_only_programs_are_executable(self):
        listing = subprocess.run(["dpkg-deb", "--contents", DEB], capture_output=True, text=True, check=True).stdout
        for line in listing.splitlines():
            mode, owner, _, _, _, name = line.split(maxsplit=5)
            wanted = {"d": "drwxr-xr-x", "l": "lrwxrwxrwx"}.get(
                mode[0], "-rwxr-xr-x" if name.startswith("./usr/bin/") else "-rw-r--r--")
            self.assertEqual((mode, owner), (wanted, "root/root"), name)

    def test_nothing_tells_where_it_was_built(self):
        for path in files():
            content = path.read_bytes()
            for folder in FORBIDDEN:
                self.assertNotIn(folder.encode(), content, path)

    def test_no_symbols_are_carried_that_nobody_needs(self):
        for path in filter(is_elf, files()):
            self.assertEqual({".symtab", ".debug_info"} & set(sections(path)), set(), path)

    def test_the_programs_are_hardened(self):
        for path in filter(is_elf, (ROOT / "usr/bin").iterdir()):
            told = subprocess.run(["readelf", "--file-header", "--program-headers", "--dynamic", "--wide", path],
                                  capture_output=True, text=True, check=True).stdout
            self.assertIn("DYN (Position-Independent Executable", told, path)
            self.assertIn("GNU_RELRO", told, path)
            self.assertRegex(told, r"FLAGS.*\bNOW\b", path)

    def test_the_changelog_speaks_of_this_version(self):
        with gzip.open(ROOT / "usr/share/doc/tulvane/changelog.Debian.gz", "rt", encoding="utf-8") as text:
            first = subprocess.run(["dpkg-parsechangelog", "--file", "-", "--show-field", "Version"],
                                   input=text.read(), capture_output=True, text=True, check=True)
        self.assertEqual((first.stdout.strip(), first.stderr), (field("Version"), ""))


class Control(unittest.TestCase):
    def test_it_depends_on_the_systems_libraries_and_not_on_its_own(self):
        needed = {re.split(r"[ (]", entry.strip())[0] for entry in field("Depends").split(",")}
        for name in ("libc6", "libstdc++6", "libqt6core6", "libqt6dbus6", "libpulse0", "libsndfile1", "libsoxr0",
                     "libxcb1", "libqt6quick6", "qml6-module-qtquick", "fonts-inter"):
            self.assertIn(name, needed)
        self.assertTrue([name for name in needed if name.startswith("libcurl")], needed)
        self.assertEqual([name for name in needed if re.search("whisper|ggml|-dev$", name)], [])

    def test_the_fields_that_every_package_has(self):
        self.assertEqual(field("Package"), "tulvane")
        self.assertRegex(field("Maintainer"), r"^.+ <.+@.+>$")
        self.assertIn("\n ", field("Description"))
        size = sum(path.stat().st_size for path in files()) // 1024
        self.assertAlmostEqual(int(field("Installed-Size")), size, delta=size // 10)


class Processors(InstalledTest):
    """One library for each instruction set: the best that the machine has is used, and any of them alone will do."""

    def test_the_amx_backend_is_not_carried(self):
        names = [path.name for path in LIBRARIES.glob("libggml-cpu-*.so")]
        self.assertGreaterEqual(len(names), 2)
        self.assertEqual([name for name in names if "sapphirerapids" in name], [])

    def test_each_does_the_work_when_the_better_ones_are_missing(self):
        kept = Path(tempfile.mkdtemp(dir=ROOT))
        self.addCleanup(lambda: [shutil.move(path, LIBRARIES) for path in kept.iterdir()])
        tried = []
        while True:
            run, opened = self.transcribe_traced()
            if run.returncode != 0:
                break
            # All are asked what they are worth here; the best is opened once more, to be used.
            best = [path for path in opened if "/libggml-cpu-" in path][-1]
            self.assertEqual((run.stdout, run.stderr), (SAID + "\n", ""), best)
            tried.append(Path(best).name)
            shutil.move(best, kept)
        if os.uname().machine == "x86_64":
            self.assertEqual(tried[-1], "libggml-cpu-x64.so")
            self.assertGreaterEqual(len(tried), 3, tried)
        # What is left cannot run here. There is a message, not a crash.
        self.assert_fails(run, 1, "tulvane: Could not load the speech model")

    @unittest.skipUnless(os.uname().machine == "x86_64" and shutil.which("qemu-x86_64"), "needs qemu-user")
    def test_an_older_processor_gets_what_it_can_run(self):
        for processor, wanted in {"qemu64": "x64", "Haswell": "haswell"}.items():
            run = subprocess.run(["qemu-x86_64", "-cpu", processor, "-strace", PROGRAM, "transcribe",
                                  self.speak(SAID), *DEMO], capture_output=True, text=True, timeout=300,
                                 env=self.environment, errors="replace", check=False)
            self.assertEqual((run.returncode, run.stdout), (0, SAID + "\n"), run.stderr[-2000:])
            self.assertEqual(re.findall(r"libggml-cpu-(\w+)\.so", run.stderr)[-1], wanted)


if __name__ == "__main__":
    unittest.main()
