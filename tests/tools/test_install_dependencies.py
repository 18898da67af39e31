#!/usr/bin/env python3
"""What the script would install on machines that have this or that, told by a package manager of the test's own."""
import os
import subprocess
import tempfile
import unittest
from pathlib import Path

TOOL = Path(__file__).resolve().parents[2] / "tools" / "install-dependencies"


class InstallDependencies(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.commands = Path(folder.name)
        for name in ["bash", "sed", "sort", "grep", "timeout", "dirname", "env", "tr", "id", "cat"]:
            (self.commands / name).symlink_to(subprocess.run(["which", name], capture_output=True, text=True,
                                                             check=True).stdout.strip())
        self.add("apt-get", "exit 1")
        self.packages()

    def add(self, name, body):
        file = self.commands / name
        file.write_text(f"#!/bin/bash\n{body}\n")
        file.chmod(0o755)

    def packages(self, *installed):
        """dpkg-query knows these, and prints them in the format that it is asked for."""
        lines = "\n".join(f'[[ " $* " == *" {name} "* ]] && echo "ii  {name}"' for name in installed)
        self.add("dpkg-query", lines + "\nexit 0")

    def missing(self, purpose):
        run = subprocess.run([TOOL, "--check", purpose], env={"PATH": str(self.commands), "LC_ALL": "C"},
                             capture_output=True, text=True, timeout=30, check=False)
        self.assertEqual(run.stderr, "")
        return run.stdout.split()

    def test_running_needs_no_sound_server_and_no_tests_tools(self):
        packages = self.missing("run")
        self.assertIn("qt6-base-dev", packages)
        for name in ["pulseaudio", "pipewire-pulse", "chromium", "clang-tidy-19", "libgtest-dev", "xvfb"]:
            self.assertNotIn(name, packages)

    def test_a_show_without_any_sound_server_brings_one(self):
        packages = self.missing("show")
        self.assertIn("pulseaudio", packages)
        self.assertNotIn("pipewire-pulse", packages)

    def test_a_show_puts_none_beside_one_that_is_installed(self):
        self.packages("pipewire-pulse")
        self.assertNotIn("pulseaudio", self.missing("show"))

    def test_a_show_puts_none_beside_one_that_is_no_package(self):
        self.add("pipewire-pulse", "exit 0")
        self.assertNotIn("pulseaudio", self.missing("show"))

    def test_a_show_puts_none_beside_one_that_answers(self):
        self.add("pactl", "exit 0")
        self.assertNotIn("pulseaudio", self.missing("show"))

    def test_a_card_needs_the_compiler_of_shaders_and_a_package_brings_the_card(self):
        for purpose in ["gpu", "package"]:
            packages = self.missing(purpose)
            for name in ["glslc", "libvulkan-dev", "spirv-headers", "g++"]:
                self.assertIn(name, packages)
        self.assertNotIn("glslc", self.missing("build"))

    def test_what_is_there_is_not_named(self):
        self.packages("qt6-base-dev", "cmake")
        packages = self.missing("build")
        self.assertNotIn("qt6-base-dev", packages)
        self.assertNotIn("cmake", packages)
        self.assertIn("ninja-build", packages)

    def test_an_unknown_purpose_is_refused(self):
        run = subprocess.run([TOOL, "everything"], env={"PATH": os.environ["PATH"]}, capture_output=True, text=True,
                             timeout=30, check=False)
        self.assertEqual(run.returncode, 2)
        self.assertIn("PURPOSE", run.stderr)


if __name__ == "__main__":
    unittest.main()
