"""A disk that fails at any one call: what was stored stays or becomes the new, and never anything else."""
import errno
import json
import os
import re
import shutil
import subprocess
import unittest

from program import ProgramTest

DISK = os.environ["TULVANE_FAILING_DISK"]
STATS_WRITER = os.environ["TULVANE_STATS_WRITER"]
RECORD_WRITER = os.environ["TULVANE_RECORD_WRITER"]
ERRORS = [errno.ENOSPC, errno.EIO, errno.EROFS, errno.EACCES]
BEFORE = {"language": "no", "vocabularyPrompt": "Kari", "unknown": [1, 2, 3]}


class OnADiskThatFails(ProgramTest):
    def setUp(self):
        super().setUp()
        self.disk = self.folder / "config"
        self.plain = dict(self.environment)

    def fail_at(self, number, error):
        self.environment = dict(self.plain, LD_PRELOAD=DISK, TULVANE_TEST_DISK=str(self.disk),
                                TULVANE_TEST_FAILS_AT=str(number), TULVANE_TEST_ERROR=str(error),
                                TULVANE_TEST_CALLS=str(self.folder / "calls"))

    def calls(self):
        return int((self.folder / "calls").read_text())

    def left(self):
        return {path.name for path in self.disk.iterdir()}


class Settings(OnADiskThatFails):
    def setUp(self):
        super().setUp()
        self.file = self.disk / "com.dunio.Tulvane.json"

    def stored(self):
        """Without the note that there was nothing to take over, which every first start leaves."""
        content = json.loads(self.file.read_text())
        return {key: value for key, value in content.items() if not key.startswith("didMigrate")}

    def try_all(self, error, prepare):
        """Each call once: the status says what happened, and the file is what it was or what it should be."""
        number = refused = 0
        while True:
            number += 1
            prepare()
            before = self.stored() if self.file.exists() else {}
            self.fail_at(number, error)
            run = self.run_program("settings", "set", "language", "nn")
            after = self.stored() if self.file.exists() else {}
            if run.returncode == 0:
                self.assertEqual(after, {**before, "language": "nn"}, f"call {number}")
            else:
                refused += 1
                self.assertEqual(after, before, f"call {number}: {run.stderr}")
                self.assertIn("The setting could not be saved", run.stderr.splitlines()[-1], f"call {number}")
                # The failure is over: the next try succeeds, and nothing of the first is in its way.
                self.environment = self.plain
                self.assertEqual(self.run_program("settings", "set", "language", "nn").returncode, 0)
                self.assertEqual(self.stored(), {**before, "language": "nn"}, f"after call {number}")
            self.assertLessEqual(self.left(), {self.file.name, self.file.name + ".lock"}, f"call {number}")
            if self.calls() < number:
                break
        self.assertGreater(number, 3)
        self.assertGreater(refused, 0)

    def full(self):
        self.file.parent.mkdir(exist_ok=True)
        self.file.write_text(json.dumps(BEFORE))

    def test_a_full_disk(self):
        self.try_all(errno.ENOSPC, self.full)

    def test_a_disk_that_breaks(self):
        self.try_all(errno.EIO, self.full)

    def test_a_disk_that_became_read_only(self):
        self.try_all(errno.EROFS, self.full)

    def test_a_disk_that_is_not_ours_any_more(self):
        self.try_all(errno.EACCES, self.full)

    def test_the_first_write_of_all(self):
        def nothing():
            if self.file.parent.exists():
                for path in self.file.parent.iterdir():
                    path.unlink()
                self.file.parent.rmdir()
        self.try_all(errno.ENOSPC, nothing)


class Others(OnADiskThatFails):
    """What other parts of the program save, each by a small program over the same code."""

    def run_writer(self, *arguments):
        return subprocess.run([*map(str, arguments)], env=self.environment, capture_output=True, text=True, timeout=60)

    def each_call(self, prepare, run, check):
        """Fails each call once, with each error, and checks what is left; `run` gives what `check` is told."""
        for error in ERRORS:
            number = 0
            while True:
                number += 1
                shutil.rmtree(self.disk, ignore_errors=True)
                self.disk.mkdir()
                self.environment = self.plain
                prepare()
                self.fail_at(number, error)
                result = run()
                with self.subTest(error=errno.errorcode[error], call=number):
                    check(result, self.calls() < number)
                if self.calls() < number:
                    break
            self.assertGreater(number, 3)

    def test_statistics(self):
        file = self.disk / "statistics.json"

        def check(run, is_whole):
            self.assertEqual(run.returncode, 0, "a dictation does not fail for its count")
            text = file.read_text()
            json.loads(text)
            counted = sum(map(int, re.findall(r'"dictations"\s*:\s*(\d+)', text)))
            # What the first save could not bring to the disk, the second one has brought.
            self.assertIn(counted, [3] if is_whole else [2, 3])
            self.assertLessEqual(self.left(), {file.name, file.name + ".lock"})
        self.each_call(lambda: self.run_writer(STATS_WRITER, file, 1), lambda: self.run_writer(STATS_WRITER, file, 2), check)

    def test_the_record_of_a_download(self):
        def check(run, is_whole):
            self.assertEqual(len(self.left()), 1, "nothing lies beside it")
            record = json.loads((self.disk / self.left().pop()).read_text())
            self.assertEqual(record["safeBytes"], 2 if run.returncode == 0 else 1)
            self.assertTrue(run.returncode == 0 or not is_whole)
        self.each_call(lambda: self.run_writer(RECORD_WRITER, self.disk, 1),
                       lambda: self.run_writer(RECORD_WRITER, self.disk, 2), check)


if __name__ == "__main__":
    unittest.main()
