import stat
import subprocess
import time
import unittest
from pathlib import Path

from program import PROGRAM, ProgramTest

SAID = "Hei, dette er en test."
DEMO = ["--model", "demo", "--language", "no"]


def facts(file):
    """The lines of a file under /proc: name and value."""
    return dict(line.split(":", 1) for line in file.read_text().splitlines() if ":" in line)


class Security(ProgramTest):
    def transcribing(self):
        """A transcription of ten minutes, which a test need not wait for, and the thread that reads the model."""
        long = self.speak(SAID * 300)
        process = subprocess.Popen([PROGRAM, "transcribe", long, *DEMO], env=self.environment, cwd=self.folder,
                                   stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.addCleanup(process.communicate)
        self.addCleanup(process.kill)
        end = time.monotonic() + 20
        while time.monotonic() < end:
            for thread in Path(f"/proc/{process.pid}/task").iterdir():
                if (thread / "comm").read_text().strip() == "whisper-model":
                    return process, thread
            time.sleep(0.01)
        self.fail("no thread works on the model")

    def test_the_thread_that_reads_models_has_given_up_its_rights_and_the_main_thread_has_not(self):
        process, thread = self.transcribing()
        end = time.monotonic() + 10
        while facts(thread / "status")["Seccomp"].strip() != "2" and time.monotonic() < end:
            time.sleep(0.01)
        self.assertEqual(facts(thread / "status")["Seccomp"].strip(), "2")
        self.assertEqual(facts(thread / "status")["NoNewPrivs"].strip(), "1")
        self.assertEqual(facts(Path(f"/proc/{process.pid}/status"))["NoNewPrivs"].strip(), "0")

    def test_a_crash_leaves_no_recording_and_no_text_behind(self):
        process, _ = self.transcribing()
        limits = Path(f"/proc/{process.pid}/limits").read_text()
        core = next(line for line in limits.splitlines() if line.startswith("Max core file size"))
        self.assertEqual(core.split()[4], "0", core)
        self.assertEqual(int(Path(f"/proc/{process.pid}/coredump_filter").read_text(), 16), 0)

    def test_what_is_stored_is_the_users_alone_whatever_the_umask_permits(self):
        self.environment["XDG_CACHE_HOME"] = str(self.folder / "cache")
        for line in (["settings", "set", "playSounds", "false"], ["models", "list"],
                     ["transcribe", self.speak(SAID), *DEMO]):
            run = self.run_program(*line, umask=0)
            self.assertEqual(run.returncode, 0, run.stderr)
        stored = [path for root in ("config", "data", "cache") for path in (self.folder / root).rglob("*")]
        self.assertTrue([path for path in stored if path.is_file()], "nothing was stored")
        for path in stored:
            mode = stat.S_IMODE(path.lstat().st_mode)
            self.assertEqual(mode & 0o077, 0, f"{path}: {mode:o}")

    def test_no_socket_listens_and_no_address_is_asked(self):
        process, _ = self.transcribing()
        opened = [Path(f"/proc/{process.pid}/fd/{fd.name}").readlink()
                  for fd in Path(f"/proc/{process.pid}/fd").iterdir()]
        self.assertEqual([str(link) for link in opened if str(link).startswith("socket:")], [])


if __name__ == "__main__":
    unittest.main()
