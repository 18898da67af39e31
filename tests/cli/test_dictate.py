import json
import signal
import subprocess
import time
import unittest

from program import PROGRAM, ProgramTest
from sound_server import SoundServer

SAID = "Hei, dette er en test."
DEMO = ["--model", "demo", "--language", "no"]


class Dictate(ProgramTest):
    def setUp(self):
        super().setUp()
        self.server = SoundServer(self.folder)
        self.server.__enter__()
        self.addCleanup(self.server.__exit__)
        self.environment.update(self.server.environment)

    def start(self, *words):
        program = subprocess.Popen([PROGRAM, "dictate", *DEMO, *words], stdin=subprocess.PIPE,
                                   stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                                   env=self.environment)
        self.addCleanup(program.kill)
        self.assertEqual(program.stderr.readline(), "Listening; Enter or Ctrl+C ends it.\n")
        # The virtual microphone itself listens to its sink, so the program is the second one.
        deadline = time.monotonic() + 20
        while len(self.server.ask("list", "short", "source-outputs").stdout.splitlines()) < 2:
            self.assertLess(time.monotonic(), deadline, "the microphone was not opened")
            time.sleep(0.02)
        return program

    def finish(self, program, given=None):
        out, err = program.communicate(given, timeout=60)
        return program.returncode, out, err

    def test_what_is_spoken_until_enter_comes_out_as_its_words(self):
        program = self.start()
        self.server.play(self.speak(SAID))
        self.assertEqual(self.finish(program, "\n"), (0, SAID + "\n", ""))

    def test_ctrl_c_ends_the_recording_not_the_program(self):
        program = self.start("--json")
        self.server.play(self.speak(SAID))
        program.send_signal(signal.SIGINT)
        status, out, err = self.finish(program)
        self.assertEqual((status, err), (0, ""))
        result = json.loads(out)
        self.assertEqual(result["text"], SAID)
        self.assertGreater(result["audioSeconds"], 1.0)

    def test_seconds_end_the_recording(self):
        program = self.start("--seconds", "3")
        self.server.play(self.speak(SAID))
        self.assertEqual(self.finish(program), (0, SAID + "\n", ""))

    def test_silence_is_nothing_heard_and_the_log_names_the_mute_device(self):
        program = self.start("--seconds", "1")
        status, out, err = self.finish(program)
        self.assertEqual((status, out), (0, ""))
        log, verdict = err.splitlines()
        self.assertRegex(log, r"\[audio\] error: .*Monitor of Null Output")
        self.assertEqual(verdict, "Nothing heard")

    def test_a_key_pressed_at_once_is_too_short(self):
        program = self.start()
        self.assertEqual(self.finish(program, "\n")[:2], (0, ""))

    def test_a_dictation_is_counted_and_nothing_of_it_is_written_down(self):
        program = self.start()
        self.server.play(self.speak(SAID))
        self.assertEqual(self.finish(program, "\n")[0], 0)
        figures = json.loads(self.run_program("stats", "--json").stdout)
        self.assertEqual((figures["dictations"], figures["words"]), (1, 5))
        for path in self.folder.rglob("*"):
            if path.is_file() and path.suffix not in {".wav"}:
                self.assertNotIn(b"dette er en test", path.read_bytes(), path)

    def test_a_microphone_that_goes_away_cancels_the_recording(self):
        program = self.start()
        self.server.ask("unload-module", "module-remap-source")
        status, out, err = self.finish(program)
        self.assertEqual((status, out), (1, ""))
        self.assertIn("tulvane: Microphone changed – recording cancelled\n", err)


class WithoutAMicrophone(ProgramTest):
    def test_no_sound_server_is_told_in_the_recorders_words(self):
        self.environment["PULSE_SERVER"] = f"unix:{self.folder}/none"
        run = self.run_program("dictate", *DEMO)
        self.assertEqual((run.returncode, run.stdout), (1, ""))
        self.assertIn("tulvane: No microphone is available.\n", run.stderr)

    def test_no_model_is_told_in_the_sessions_words(self):
        run = self.run_program("dictate")
        self.assert_fails(run, 1, "The speech model has not been downloaded yet.")


if __name__ == "__main__":
    unittest.main()
