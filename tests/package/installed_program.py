"""What holds for the program wherever it was installed: it works, out of its own folders alone."""
import json
import os
import re
import subprocess
import sys
from pathlib import Path

from elf import is_elf, search_folders

SOURCE = Path(__file__).resolve().parents[2]
sys.path += [str(SOURCE / "tests/cli")]

from program import PROGRAM, ProgramTest  # noqa: E402 (needs the path)

BIN = Path(PROGRAM).parent
SHARE = BIN.parent / "share"
LIBRARIES = Path(os.environ["TULVANE_INSTALLED_LIBRARIES"])
# What the installed program must do without: the tree, all that was built in it, and another tree's speech library.
FORBIDDEN = [str(SOURCE), *filter(None, os.environ.get("TULVANE_BUILD_FOLDERS", "").split(":"))]

SAID = "Hei, dette er en test."
DEMO = ["--model", "demo", "--language", "no"]


class InstalledTest(ProgramTest):
    def setUp(self):
        super().setUp()
        # Neither the desktop of whoever runs this nor its sound server has a part in it.
        for name in ("DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "LD_LIBRARY_PATH"):
            self.environment.pop(name, None)
        runtime = self.folder / "runtime"
        runtime.mkdir(mode=0o700)
        self.environment["XDG_RUNTIME_DIR"] = str(runtime)

    def run_traced(self, *arguments, **options):
        """Runs the program; gives how it ended, and every file that it or a child of it opened or ran."""
        trace = self.folder / "trace"
        run = subprocess.run(["strace", "-f", "-qq", "-e", "trace=open,openat,execve", "-o", trace, PROGRAM,
                              *map(str, arguments)], capture_output=True, text=True, timeout=120,
                             env=self.environment, check=False, **options)
        lines = [line for line in trace.read_text(errors="replace").splitlines() if " = -1 " not in line]
        return run, [os.path.realpath(found[1]) for line in lines if (found := re.search(r'"([^"]+)"', line))]

    def transcribe_traced(self, **options):
        return self.run_traced("transcribe", self.speak(SAID), *DEMO, **options)

    def assert_own(self, paths):
        for path in paths:
            for folder in FORBIDDEN:
                self.assertFalse(path.startswith(folder + "/"), path)


class InstalledProgram(InstalledTest):
    def test_it_says_its_version_and_its_commands(self):
        self.assertRegex(self.run_program("--version").stdout, r"^tulvane \d+\.\d+\.\d+\n$")
        self.assertIn("  transcribe ", self.run_program("--help").stdout)

    def test_it_transcribes_with_its_own_libraries_and_its_own_model(self):
        run, opened = self.transcribe_traced()
        self.assertEqual((run.returncode, run.stdout, run.stderr), (0, SAID + "\n", ""))
        self.assert_own(opened)
        self.assertIn(str(SHARE / "tulvane/models/demo.bin"), opened)
        library = [path for path in opened if re.match(r"lib(whisper|ggml)", Path(path).name)]
        # What is for a graphics card lies below.
        self.assertEqual({Path(path).parent for path in library} - {LIBRARIES / "devices"}, {LIBRARIES})
        for name in ("libwhisper.so", "libggml.so", "libggml-base.so", "libggml-cpu"):
            self.assertTrue([path for path in library if Path(path).name.startswith(name)], name)

    def test_no_library_is_taken_from_the_current_folder_or_by_the_environments_word(self):
        for name in ("libggml-cpu.so", "libggml-cpu-zzz.so", "libggml-cuda.so", "libggml-blas.so"):
            (self.folder / name).write_bytes(b"not a library")
        self.environment["GGML_BACKEND_PATH"] = str(self.folder / "libggml-cuda.so")
        run, opened = self.transcribe_traced(cwd=self.folder)
        self.assertEqual((run.returncode, run.stdout, run.stderr), (0, SAID + "\n", ""))
        self.assertEqual([path for path in opened if path.startswith(str(self.folder / "libggml"))], [])

    def test_the_doctor_finds_a_processor_to_compute_with(self):
        findings = json.loads(self.run_program("doctor", "--json").stdout)
        accelerator = [finding for finding in findings if finding["subject"] == "accelerator"]
        self.assertEqual([finding["works"] for finding in accelerator], [True], accelerator)

    def test_the_models_are_listed_and_downloads_go_through_the_helper_beside_it(self):
        models = json.loads(self.run_program("models", "list", "--json").stdout)
        self.assertGreaterEqual(len(models), 5)
        # Its own server, with nothing on it; only the helper speaks HTTP, so an answer tells that it was found.
        hub = subprocess.Popen([sys.executable, SOURCE / "tests/support/hub_server.py", self.folder],
                               stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        self.addCleanup(hub.stdout.close)
        self.addCleanup(hub.communicate, timeout=20)
        self.environment["TULVANE_HUB_URL"] = f"http://127.0.0.1:{hub.stdout.readline().strip()}/"
        self.environment.update(no_proxy="127.0.0.1", NO_PROXY="127.0.0.1")
        run = self.run_program("models", "download", models[0]["id"])
        self.assertEqual(run.returncode, 1)
        self.assertIn("404", run.stderr)
        requests = [json.loads(line) for line in (self.folder / "requests").read_text().splitlines()]
        self.assertEqual([request["status"] for request in requests], [404])

    def test_libraries_are_looked_for_beside_the_program_and_nowhere_else(self):
        binaries = [path for path in [*BIN.iterdir(), *LIBRARIES.rglob("*")]
                    if path.is_file() and is_elf(path)]
        self.assertGreaterEqual(len(binaries), 6)
        for path in binaries:
            for folder in search_folders(path):
                place = Path(os.path.normpath(folder.replace("$ORIGIN", str(path.parent))))
                self.assertEqual(place, LIBRARIES, path)

    def test_the_desktop_finds_its_entry_its_description_and_its_help(self):
        entry = SHARE / "applications/com.dunio.Tulvane.desktop"
        description = SHARE / "metainfo/com.dunio.Tulvane.metainfo.xml"
        for command in (["desktop-file-validate", entry], ["appstreamcli", "validate", "--no-net", description]):
            run = subprocess.run(command, capture_output=True, text=True, check=False)
            self.assertEqual(run.returncode, 0, run.stdout + run.stderr)
        text = entry.read_text(encoding="utf-8")
        started = re.findall(r"^Exec=(\S+) ?(\S*)$", text, re.MULTILINE)
        self.assertEqual([words for _, words in started], ["", "quit"])
        for program, _ in started:
            self.assertTrue(os.access(BIN / program, os.X_OK), program)
        # What the windows' own class is, as the desktop tests read it back.
        self.assertIn("\nStartupWMClass=Tulvane\n", text)
        self.assertIn("\nActions=Quit;\n", text)
        self.assertTrue((SHARE / "tulvane/help/permissions.html").is_file())

    def test_kde_finds_which_programs_may_press_keys(self):
        for name in ("desktop", "commands"):
            entry = SHARE / f"applications/com.dunio.Tulvane.{name}.desktop"
            run = subprocess.run(["desktop-file-validate", entry], capture_output=True, text=True, check=False)
            self.assertEqual(run.returncode, 0, run.stdout + run.stderr)
            text = entry.read_text(encoding="utf-8")
            # KWin compares the whole of it with the executable's path, spaces and all.
            program = Path(re.search(r"^Exec=(/.+)$", text, re.MULTILINE).group(1))
            self.assertEqual(program.name, f"tulvane-{name}")
            self.assertTrue(os.access(BIN / program.name, os.X_OK), program)
            self.assertIn("\nNoDisplay=true\n", text)
            self.assertIn("\nX-KDE-Wayland-Interfaces=org_kde_kwin_fake_input\n", text)

    def test_the_licences_of_all_that_is_carried_are_there(self):
        text = (SHARE / "doc/tulvane/copyright").read_text(encoding="utf-8")
        for holder in ("The Tulvane maintainers", "The ggml authors", "Niels Lohmann"):
            self.assertIn(holder, text)
        self.assertIn("Permission is hereby granted", text)
