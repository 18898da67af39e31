"""The show of the whole product: its verdict, its start on a real desktop, and that it leaves nothing behind."""
import os
import re
import signal
import subprocess
import tempfile
import unittest
from pathlib import Path

from sentences import SENTENCES, complaints, share
from sound_server import SERVERS
from virtual_desktop import VirtualDesktop
from wayland_desktop import desktop_of

PROGRAM = Path(os.environ["TULVANE_PROGRAM"])
RUN_DEMO = os.environ["TULVANE_RUN_DEMO"]
SAID = [said for _, _, said in SENTENCES]


class Verdict(unittest.TestCase):
    def complaints(self, arrived, editor=None):
        return complaints(arrived, "\n".join(text or "" for text in arrived) if editor is None else editor)

    def test_what_arrived_as_it_was_said_is_well(self):
        self.assertEqual(self.complaints([said + " " for said in SAID]), [])

    def test_half_of_the_words_in_their_order_are_enough(self):
        self.assertEqual(share("one two three four", "two, Four!"), 0.5)
        self.assertEqual(share("one two three four", "four three"), 0.25)
        half = " ".join(SAID[0].split()[:5])
        self.assertEqual(self.complaints([half, *SAID[1:]]), [])

    def test_a_sentence_misheard_beyond_recognition_is_told(self):
        self.assertEqual(self.complaints([*SAID[:-1], "And you"]),
                         [f"Fewer than half of the words of: {SAID[-1]}"])

    def test_a_lost_sentence_is_told(self):
        self.assertEqual(self.complaints([SAID[0], None, *SAID[2:]]), [f"Lost: {SAID[1]}"])

    def test_sentences_in_another_order_are_told(self):
        self.assertEqual(len(self.complaints([SAID[1], SAID[0], *SAID[2:]])), 2)

    def test_anything_else_in_the_editor_is_told(self):
        for more in ("\n".join(SAID) + "x", "\n".join([*SAID, SAID[0]]), ""):
            self.assertEqual(len(self.complaints(SAID, more)), 1)


class ShowTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def started_here(self):
        """Processes of the show's own home, which lies in our folder."""
        mark = f"XDG_RUNTIME_DIR={self.folder}/".encode()
        found = []
        for process in Path("/proc").glob("[0-9]*"):
            try:
                if mark in (process / "environ").read_bytes():
                    found.append((process / "comm").read_text().strip())
            except OSError:
                pass
        return found

    def run_demo(self, *arguments, **environment):
        show = subprocess.Popen([RUN_DEMO, *arguments], env={**os.environ, **environment, "TMPDIR": str(self.folder)},
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        self.addCleanup(show.communicate)
        self.addCleanup(show.kill)
        return show


class Processes(ShowTest):
    def end_in_the_middle(self, number):
        """While the new user's first page is being shown."""
        pictures = self.folder / "pictures"
        show = self.run_demo("--unattended", "--pictures", str(pictures))
        VirtualDesktop.wait(lambda: list(pictures.glob("*.png")) or show.poll() is not None, limit=30)
        self.assertIn("tulvane-desktop", self.started_here())
        show.send_signal(number)
        self.assertEqual(show.wait(20), 128 + number)
        self.assertEqual(self.started_here(), [])

    def test_ctrl_c_ends_everything(self):
        self.end_in_the_middle(signal.SIGINT)

    def test_a_closed_terminal_ends_everything(self):
        self.end_in_the_middle(signal.SIGHUP)

    def test_nothing_outlives_a_show_that_was_killed(self):
        pictures = self.folder / "pictures"
        show = self.run_demo("--unattended", "--pictures", str(pictures))
        VirtualDesktop.wait(lambda: list(pictures.glob("*.png")) or show.poll() is not None, limit=30)
        show.kill()
        VirtualDesktop.wait(lambda: not self.started_here(), limit=20, what="the end of all that it started")

    def test_on_a_desktop_it_starts_the_program_there(self):
        home = self.folder / "home"
        home.mkdir()
        desktop = VirtualDesktop(home, PROGRAM, sound=False)
        self.addCleanup(desktop.end)
        show = self.run_demo(**desktop.environment)
        desktop.wait(lambda: desktop.windows("Sett opp Tulvane"), what="the setup guide")
        self.assertIn("--model demo", "".join(show.stdout.readline() for _ in range(3)))
        show.terminate()
        self.assertEqual(show.wait(10), 0)


@unittest.skipUnless(os.environ.get("TULVANE_SOAK", "0") != "0", "a minute each: with TULVANE_SOAK=1")
class WaylandDesktops(ShowTest):
    def test_every_sentence_arrives(self):
        for desktop, kind in (("sway", "sway"), ("kde", "kwin"), ("gnome", "gnome")):
            with self.subTest(desktop):
                if desktop_of(kind).missing():
                    self.skipTest(f"not installed: {' '.join(desktop_of(kind).missing())}")
                show = self.run_demo("--unattended", "--desktop", desktop, "--pictures", str(self.folder / desktop))
                said, complained = show.communicate(timeout=300)
                self.assertEqual(show.returncode, 0, said + complained)


class VirtualSound(unittest.TestCase):
    def test_the_microphone_hears_what_is_played_into_it_whichever_server_is_there(self):
        for server in SERVERS:
            with self.subTest(server), tempfile.TemporaryDirectory() as home:
                desktop = VirtualDesktop(home, PROGRAM, sound=server)
                self.addCleanup(desktop.end)
                tone, heard = Path(home) / "tone.wav", Path(home) / "heard.wav"
                desktop.run("sox", "-n", "-r", "48000", "-c", "1", tone, "synth", "2", "sine", "440")
                recorder = desktop.start("parecord", "--device=vmic", "--file-format=wav", str(heard))
                desktop.run("paplay", "--device=micsink", tone)
                recorder.terminate()
                recorder.wait(10)
                statistics = subprocess.run(["sox", heard, "-n", "stat"], capture_output=True, text=True, check=True)
                peak = re.search(r"Maximum amplitude: *([0-9.]+)", statistics.stderr)
                self.assertGreater(float(peak.group(1)), 0.5)


if __name__ == "__main__":
    unittest.main()
