"""Starts without what programs are used to: no home folder, no language, no time zone. Nothing crashes, and what is missing is
said once, in words."""
import os
import pwd
import unittest
from pathlib import Path

from program import ProgramTest

HOME = Path(pwd.getpwuid(os.geteuid()).pw_dir)
MODEL = "nb-whisper-small-q5_0"


class Bare(ProgramTest):
    def setUp(self):
        super().setUp()
        # No folder can be made below a file, not by the superuser either.
        (self.folder / "file").touch()
        self.nowhere = self.folder / "file/home"

    def without(self, *names, **others):
        for name in names:
            self.environment.pop(name, None)
        self.environment.update(others)

    def without_folders(self, **others):
        self.without("XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "HOME", **others)

    def test_without_a_home_it_is_the_users_own(self):
        file = str(HOME / f".local/share/Tulvane/Models/{MODEL}.bin")
        for home in (None, "", "some/folder"):
            with self.subTest(home):
                self.without_folders(**({} if home is None else {"HOME": home}))
                run = self.run_program("models", "path", MODEL, cwd=self.folder)
                self.assertEqual((run.returncode, run.stdout.strip(), run.stderr), (0, file, ""))
        self.assertEqual([one.name for one in self.folder.iterdir()], ["file"])

    def test_a_home_that_cannot_be_made_is_told_where_something_is_to_be_stored(self):
        self.without_folders(HOME=str(self.nowhere))
        self.assertEqual(self.run_program("settings", "get", "language").stdout, "no\n")
        self.assertEqual(self.run_program("stats").returncode, 0)
        stored = self.run_program("settings", "set", "language", "en")
        self.assertEqual((stored.returncode, stored.stdout), (1, ""))
        self.assertIn(f"tulvane: The setting could not be saved to {self.nowhere}", stored.stderr)

    def test_a_download_without_a_place_says_which_at_once(self):
        self.without_folders(HOME=str(self.nowhere), XDG_CONFIG_HOME=str(self.folder / "config"), TULVANE_HUB_URL="http://127.0.0.1:9/")
        run = self.run_program("models", "download", MODEL, timeout=20)
        self.assertEqual((run.returncode, run.stdout), (1, ""))
        self.assertIn(f"tulvane: Downloads do not work here: {self.nowhere}/.local/share/Tulvane", run.stderr)

    def test_any_language_and_none_write_the_same_letters(self):
        for language in ({}, {"LANG": "C"}, {"LC_ALL": "C"}, {"LC_ALL": "POSIX"}, {"LC_ALL": "xx_YY.nonsense"},
                         {"LANG": "nb_NO.ISO-8859-1"}, {"LANG": ""}):
            with self.subTest(language):
                self.without("LANG", "LC_ALL", "LC_CTYPE", "LANGUAGE", PYTHONUTF8="1", **language)
                run = self.run_program("clean", given="øl på «Ærfugl» 日本", encoding="utf-8")
                self.assertEqual((run.returncode, run.stdout), (0, "Øl på «Ærfugl» 日本 "), run.stderr)
                self.assertEqual(run.stderr, "")

    def test_any_time_zone_and_none_count_the_same(self):
        for zone in (None, "", "Nowhere/Land", ":", "/dev/null", "XYZ" * 2000, "UTC-25:99"):
            with self.subTest(zone and zone[:20]):
                self.without("TZ", **({} if zone is None else {"TZ": zone}))
                run = self.run_program("stats", "--json")
                self.assertEqual((run.returncode, run.stderr), (0, ""))
                self.assertIn('"dictations":0', run.stdout)

    def test_without_a_bus_and_a_runtime_folder_the_program_that_runs_cannot_be_asked(self):
        self.without("DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR", "DISPLAY")
        for command in ("status", "start", "stop", "quit"):
            with self.subTest(command):
                self.assert_fails(self.run_program(command), 3, "There is no session bus")
        self.assertEqual(self.run_program("doctor").returncode, 1)


if __name__ == "__main__":
    unittest.main()
