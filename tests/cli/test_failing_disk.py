"""A disk that fails at any one call: what was stored stays or becomes the new, and never anything else."""
import errno
import json
import os
import unittest

from program import ProgramTest

DISK = os.environ["TULVANE_FAILING_DISK"]
BEFORE = {"language": "no", "vocabularyPrompt": "Kari", "unknown": [1, 2, 3]}


class FailingDisk(ProgramTest):
    def setUp(self):
        super().setUp()
        self.file = self.folder / "config/com.dunio.Tulvane.json"
        self.plain = dict(self.environment)

    def fail_at(self, number, error):
        self.environment = dict(self.plain, LD_PRELOAD=DISK, TULVANE_TEST_DISK=str(self.folder / "config"),
                                TULVANE_TEST_FAILS_AT=str(number), TULVANE_TEST_ERROR=str(error),
                                TULVANE_TEST_CALLS=str(self.folder / "calls"))

    def calls(self):
        return int((self.folder / "calls").read_text())

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
            left = {path.name for path in self.file.parent.iterdir()} - {self.file.name, self.file.name + ".lock"}
            self.assertEqual(left, set(), f"call {number}")
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

    def test_the_first_write_of_all(self):
        def nothing():
            if self.file.parent.exists():
                for path in self.file.parent.iterdir():
                    path.unlink()
                self.file.parent.rmdir()
        self.try_all(errno.ENOSPC, nothing)


if __name__ == "__main__":
    unittest.main()
