import json
import shutil
import subprocess
import unittest

from program import PROGRAM, ProgramTest

COMMANDS = ["transcribe", "dictate", "clean", "settings", "stats", "models", "start", "stop", "toggle", "cancel", "quit",
            "status", "doctor"]


class Words(ProgramTest):
    def test_help_and_version_for_the_program(self):
        run = self.run_program("--help")
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        for command in COMMANDS:
            self.assertIn(f"  {command} ", run.stdout)
        self.assertIn("simple sentences spoken by a synthetic voice", run.stdout)
        self.assertRegex(self.run_program("--version").stdout, r"^tulvane \d+\.\d+\.\d+\n$")

    def test_help_and_version_for_every_command(self):
        for command in COMMANDS:
            with self.subTest(command):
                run = self.run_program(command, "--help")
                self.assertEqual((run.returncode, run.stderr), (0, ""))
                self.assertTrue(run.stdout.startswith(f"Usage: tulvane {command}"), run.stdout)
                run = self.run_program(command, "--version")
                self.assertEqual((run.returncode, run.stdout), (0, self.run_program("--version").stdout))

    def test_the_help_of_transcribe_tells_what_the_demo_model_is(self):
        text = " ".join(self.run_program("transcribe", "--help").stdout.split())
        self.assertIn("knows simple sentences spoken by a synthetic voice, and nothing more", text)

    def test_wrong_words_end_with_status_2_and_one_line(self):
        for words in [["sing"], ["--sing"], ["transcribe"], ["transcribe", "a", "b"],
                      ["transcribe", "a", "--language", "de"], ["transcribe", "a", "--threads", "0"],
                      ["transcribe", "a", "--threads", "many"], ["transcribe", "a", "--sing"],
                      ["clean", "word"], ["settings"], ["settings", "get"], ["settings", "sing"]]:
            with self.subTest(words):
                self.assert_fails(self.run_program(*words), 2, "tulvane")

    def test_the_start_of_the_program_has_its_help(self):
        for word in ["--background"]:
            run = self.run_program(word, "--help")
            self.assertTrue(run.stdout.startswith("Usage: tulvane [options]"), run.stdout)
            self.assertIn("home, models, history, statistics, settings, about", " ".join(run.stdout.split()))

    def test_words_for_the_running_program_take_this_executable_alone(self):
        # A desktop's key binding starts one at each press, and thirty in a second while the key is held.
        alone = shutil.copy(PROGRAM, self.folder / "alone")
        bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address=1"],
                               stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.addCleanup(bus.wait)
        self.addCleanup(bus.kill)
        self.addCleanup(bus.stdout.close)
        environment = {**self.environment, "DBUS_SESSION_BUS_ADDRESS": bus.stdout.readline().strip()}
        for word in ["start", "stop", "toggle", "cancel", "quit", "status"]:
            with self.subTest(word):
                run = subprocess.run([alone, word], capture_output=True, text=True, timeout=60, env=environment)
                self.assert_fails(run, 3, "Tulvane is not running.")

    def test_words_for_the_running_program_without_a_bus(self):
        self.environment.update(DBUS_SESSION_BUS_ADDRESS="unix:path=/nowhere/bus")
        self.assert_fails(self.run_program("toggle"), 3, "There is no session bus to reach the running program by.")

    def test_an_unknown_page_is_wrong_words(self):
        self.assert_fails(self.run_program("--page", "kitchen"), 2, "There is no page “kitchen”.")

    def test_without_a_desktop_the_program_says_so(self):
        self.environment.pop("DISPLAY", None)
        for words in [[], ["--background"], ["--page", "models"]]:
            with self.subTest(words):
                self.assert_fails(self.run_program(*words), 1, "DISPLAY is not set")

    def test_clean_reads_standard_input_to_the_letter(self):
        run = self.run_program("clean", given="[Musikk]  hei   på deg\n\n  øl (latter)")
        self.assertEqual((run.returncode, run.stdout, run.stderr), (0, "Hei på deg\nøl ", ""))
        run = self.run_program("clean", "--no-capitalize", "--no-trailing-space", given=" ørret ")
        self.assertEqual(run.stdout, "ørret")
        self.assertEqual(self.run_program("clean", given="[musikk]").stdout, "")

    def test_settings_are_stored_typed_and_checked(self):
        self.assertEqual(self.run_program("settings", "get", "maxRecordingSeconds").stdout, "300\n")
        self.assertEqual(self.run_program("settings", "set", "playSounds", "false").returncode, 0)
        stored = json.loads((self.folder / "config/com.dunio.Tulvane.json").read_text())
        self.assertIs(stored["playSounds"], False)
        self.assertEqual(self.run_program("settings", "get", "playSounds").stdout, "false\n")
        self.assert_fails(self.run_program("settings", "get", "colour"), 2, "colour")
        self.assert_fails(self.run_program("settings", "set", "playSounds", "perhaps"), 2, "playSounds")
        self.assertEqual(len(self.run_program("settings", "list").stdout.splitlines()), 24)


if __name__ == "__main__":
    unittest.main()
