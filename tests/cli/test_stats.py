#!/usr/bin/env python3
"""The figures of a statistics file, told by the real program."""
import json
import unittest

from program import ProgramTest

FILE = ('{"days":[{"characters":600,"date":"2025-03-14T23:00:00Z","dictations":2,"speechSeconds":60,"words":100},'
        '{"characters":300,"date":"2025-03-15T23:00:00Z","dictations":1,"speechSeconds":30,"words":50}],"version":1}')
NOW = ["--now", "2025-03-16T12:00:00Z"]


class StatsTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.environment["TZ"] = "Europe/Oslo"
        self.file = self.folder / "data/Tulvane/statistics.json"

    def write(self, text):
        self.file.parent.mkdir(parents=True, exist_ok=True)
        self.file.write_text(text)

    def stats(self, *arguments):
        run = self.run_program("stats", "--json", *NOW, *arguments)
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        self.assertEqual(run.stdout.count("\n"), 1)
        return json.loads(run.stdout)

    def test_figures_of_the_users_file(self):
        self.write(FILE)
        figures = self.stats("--period", "all")
        self.assertEqual({key: figures[key] for key in ("dictations", "words", "characters", "speechSeconds",
                                                        "activeDays", "currentStreak", "bestDay")},
                         {"dictations": 3, "words": 150, "characters": 900, "speechSeconds": 90, "activeDays": 2,
                          "currentStreak": 2, "bestDay": {"date": "2025-03-15", "words": 100}})
        self.assertEqual(self.stats("--period", "today")["words"], 50)
        self.assertEqual(self.file.read_text(), FILE)

    def test_days_follow_the_time_zone(self):
        self.write(FILE)
        self.environment["TZ"] = "America/New_York"
        self.assertEqual(self.stats()["bestDay"]["date"], "2025-03-14")

    def test_saved_time_follows_the_stored_typing_speed(self):
        self.write(FILE)
        self.assertEqual(self.stats()["savedSeconds"], 150 / 40 * 60 - 90)
        self.assertEqual(self.run_program("settings", "set", "typingWordsPerMinute", "20").returncode, 0)
        self.assertEqual(self.stats()["savedSeconds"], 150 / 20 * 60 - 90)

    def test_a_missing_or_damaged_file_is_empty_and_stays_as_it_is(self):
        self.assertEqual(self.stats()["words"], 0)
        self.assertFalse(self.file.exists())
        self.write("tull")
        self.assertEqual(self.stats()["words"], 0)
        self.assertEqual(self.file.read_text(), "tull")

    def test_text_for_a_reader(self):
        self.write(FILE)
        run = self.run_program("stats", *NOW)
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        self.assertIn("Words                150\n", run.stdout)
        self.assertIn("2025-03-15  100  ", run.stdout)

    def test_wrong_words(self):
        self.assert_fails(self.run_program("stats", "--period", "year"), 2, "year", "week")
        self.assert_fails(self.run_program("stats", "--now", "noon"), 2, "noon")


if __name__ == "__main__":
    unittest.main()
