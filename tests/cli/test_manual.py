"""The manual page and the completions say what the program says."""
import re
import subprocess
import tempfile
import unittest
from pathlib import Path

from program import PROGRAM, ProgramTest

TOOL = Path(__file__).resolve().parents[2] / "tools/make-manual"


class Manual(ProgramTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.made = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.made.cleanup)
        subprocess.run([TOOL, PROGRAM, cls.made.name], check=True, timeout=60)
        cls.share = Path(cls.made.name)

    def commands(self):
        listed = self.run_program("--help").stdout.split("Commands:\n")[1].split("\n\n")[0]
        return [line.split()[0] for line in listed.splitlines()]

    def complete(self, *words):
        script = self.share / "bash-completion/completions/tulvane"
        typed = " ".join(f"'{word}'" for word in words)
        run = subprocess.run(["bash", "-c", f"source '{script}'; COMP_WORDS=({typed}); COMP_CWORD={len(words) - 1}; "
                              "_tulvane; printf '%s\\n' \"${COMPREPLY[@]}\""], capture_output=True, text=True,
                             check=True, timeout=20, cwd=self.folder)
        return run.stdout.split()

    def test_every_command_and_option_stands_in_the_manual(self):
        page = (self.share / "man/man1/tulvane.1").read_text(encoding="utf-8").replace("\\-", "-")
        for command in self.commands():
            self.assertRegex(page, rf"(?m)^\.SS {command}\b")
            for option in re.findall(r"^  (--[a-z-]+)", self.run_program(command, "--help").stdout, re.M):
                self.assertIn(f"\\fB{option}\\fR", page, command)

    def test_every_shell_knows_every_command_and_option(self):
        for path in ("zsh/site-functions/_tulvane", "fish/vendor_completions.d/tulvane.fish"):
            text = (self.share / path).read_text(encoding="utf-8")
            for command in self.commands():
                self.assertIn(command, text)
            self.assertIn("no-capitalize", text)

    def test_bash_completes_commands_actions_options_and_their_values(self):
        self.assertEqual(self.complete("tulvane", "tr"), ["transcribe"])
        self.assertEqual(self.complete("tulvane", "models", "ver"), ["verify"])
        self.assertEqual(self.complete("tulvane", "clean", "--no-c"), ["--no-capitalize"])
        self.assertEqual(self.complete("tulvane", "stats", "--period", ""), ["today", "week", "month", "all"])

    def test_bash_completes_files_where_a_file_is_asked_for(self):
        (self.folder / "speech.wav").touch()
        self.assertEqual(self.complete("tulvane", "transcribe", "spe"), ["speech.wav"])


if __name__ == "__main__":
    unittest.main()
