"""Builds changed sources and runs the suite over them. The tree itself is never changed: a changed source is compiled
beside it, and linked before the room's library, whose own object is then not taken."""
import json
import os
import resource
import shlex
import shutil
import signal
import subprocess
from dataclasses import dataclass
from pathlib import Path

from schemata import VARIABLE, Schema, body_of

ENVIRONMENT = {**os.environ, "QT_QPA_PLATFORM": "offscreen", "LC_ALL": "C.UTF-8", "GTEST_FAIL_FAST": "1", "GTEST_BRIEF": "1"}
# Tests of other programs, into which no change comes.
ELSEWHERE = {"test_stats": ["StatsCrash.*", "StatsProcesses.*"]}
LONG = 0.4  # seconds; such a test runs where no shorter one has failed
MEMORY = 4 << 30  # bytes of data, and of a file: a change may make a loop endless


@dataclass(frozen=True)
class Part:
    """Some of a suite's tests."""
    filter: str
    seconds: float  # that they take


def within_limits():
    resource.setrlimit(resource.RLIMIT_DATA, (MEMORY, MEMORY))
    resource.setrlimit(resource.RLIMIT_FSIZE, (MEMORY, MEMORY))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def run(program, filter, limit, number=0, *arguments):
    """The status, or nothing where the time is over; then the program and all that it started are gone."""
    environment = {**ENVIRONMENT, VARIABLE: str(number), "GTEST_FILTER": filter}
    process = subprocess.Popen([program, *arguments], cwd=program.parents[1], env=environment, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL, start_new_session=True, preexec_fn=within_limits)
    try:
        return process.wait(limit)
    except subprocess.TimeoutExpired:
        return None
    finally:
        try:
            os.killpg(process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        process.wait()


class Workshop:
    def __init__(self, root, suites, number=0):
        self.root = root
        self.build = root / "build/mutants"
        self.own = self.build / f"bench-{number}"
        self.program = self.build / f"bin/mutant-{number}"
        self.own.mkdir(exist_ok=True)
        entries = json.loads((self.build / "compile_commands.json").read_text())
        self.compiles = {entry["file"]: entry for entry in entries}
        self.links = {suite: self.link_of(suite) for suite in suites}
        self.parts = {}

    @staticmethod
    def make(root, suites):
        """The unchanged build, of single sources and without sanitizers."""
        subprocess.run(["tools/build", "--tests", "mutants", *suites], cwd=root, check=True)

    def link_of(self, suite):
        steps = subprocess.run(["ninja", "-C", self.build, "-t", "commands", "-s", f"bin/{suite}"], capture_output=True, text=True,
                               check=True).stdout
        words = shlex.split(steps.splitlines()[-1])
        words = words[words.index("&&") + 1:]
        return words[:words.index("&&")]

    def measure(self, suite):
        """How long the unchanged suite takes, in seconds; nothing where it fails."""
        elsewhere = ELSEWHERE.get(suite, [])
        times = self.own / "times.json"
        if run(self.build / "bin" / suite, "-" + ":".join(elsewhere), 600, 0, f"--gtest_output=json:{times}") != 0:
            return None
        seconds = {f"{test['classname']}.{test['name']}": float(test["time"].rstrip("s"))
                   for cases in json.loads(times.read_text())["testsuites"] for test in cases["testsuite"]}
        long = [name for name, time in seconds.items() if time > LONG]
        short = sum(time for name, time in seconds.items() if name not in long)
        self.parts[suite] = [Part("-" + ":".join([*elsewhere, *long]), short)]
        self.parts[suite] += [Part(":".join(long), sum(seconds[name] for name in long))] if long else []
        return sum(seconds.values())

    def compile(self, file, text):
        """The compiler's messages where it refuses the text as the file's content."""
        source = self.root / file
        changed = self.own / source.name
        changed.write_text(text)
        entry = self.compiles[str(source)]
        words = shlex.split(entry["command"])
        words[words.index("-o") + 1] = str(self.own / "mutant.o")
        words[words.index("-c") + 1] = str(changed)
        words[1:1] = ["-iquote", str(source.parent)]
        done = subprocess.run(words, cwd=entry["directory"], capture_output=True, text=True, env=ENVIRONMENT)
        return None if done.returncode == 0 else done.stderr or "?"

    def link(self, suite):
        words = list(self.links[suite])
        words[words.index("-o") + 1] = str(self.program)
        words.insert(next(index for index, word in enumerate(words) if word.endswith(".o")), str(self.own / "mutant.o"))
        if shutil.which("ld.lld"):
            words.append("-fuse-ld=lld")
        subprocess.run(words, cwd=self.build, check=True, capture_output=True)

    def judge(self, suite, number=0):
        """`killed`, `hung` (killed too) or `survived`."""
        ends = (self.judge_part(suite, part, number) for part in self.parts[suite])
        return next((end for end in ends if end != "survived"), "survived")

    def judge_part(self, suite, part, number):
        limit = 5 * part.seconds + 10
        while (status := run(self.program, part.filter, limit, number)) is None:
            # A machine that is as slow for the unchanged suite says nothing about the change.
            if run(self.build / "bin" / suite, part.filter, limit) == 0:
                return "hung"
            limit *= 2
        return "survived" if status == 0 else "killed"

    def try_alone(self, mutant, suite):
        text = (self.root / mutant.file).read_text()
        if self.compile(mutant.file, mutant.applied_to(text)):
            return "refused"
        self.link(suite)
        return self.judge(suite)

    def try_together(self, file, mutants, suite):
        """Yields each change of the file and how it ended."""
        text = (self.root / file).read_text()
        inside = [mutant for mutant in mutants if body_of(mutant, text)]
        schema = Schema(text, dict(enumerate(inside, 1)))
        while schema.changes and (messages := self.compile(file, schema.source())):
            refused = schema.blamed(messages, Path(file).name)
            if not refused:
                break
            yield from ((schema.changes[number], "refused") for number in sorted(refused))
            schema = schema.without(refused)
        else:
            if schema.changes:
                self.link(suite)
            yield from ((mutant, self.judge(suite, number)) for number, mutant in schema.changes.items())
            schema = schema.without(schema.changes)
        alone = [mutant for mutant in mutants if mutant not in inside or mutant in schema.changes.values()]
        yield from ((mutant, self.try_alone(mutant, suite)) for mutant in alone)
