"""Which lines of our sources the inputs of a fuzzer run: those that are committed, and those that earlier runs kept."""
import json
import os
import subprocess
from collections import defaultdict
from pathlib import Path


def forget(build):
    for data in build.rglob("*.gcda"):
        data.unlink()


def run_lines(build, sources):
    """For each of the sources that ran at all: whether each of its lines did, by the line's number."""
    lines = defaultdict(dict)
    for data in sorted(build.rglob("*.gcda")):
        said = subprocess.run(["gcov", "--json-format", "--stdout", data], cwd=build, capture_output=True, text=True, check=True)
        for report in map(json.loads, said.stdout.splitlines()):
            for file in report["files"]:
                path = Path(report["current_working_directory"], file["file"]).resolve()
                if not path.is_relative_to(sources):
                    continue
                of_file = lines[str(path.relative_to(sources))]
                for line in file["lines"]:
                    number = line["line_number"]
                    of_file[number] = of_file.get(number, False) or line["count"] > 0
    return {path: of_file for path, of_file in lines.items() if any(of_file.values())}


def replay(build, name, folders, sources):
    """How many inputs there were, and what they ran."""
    forget(build)
    environment = {**os.environ, "QT_QPA_PLATFORM": "offscreen", "LC_ALL": "C.UTF-8", "QT_LOGGING_RULES": "*=false"}
    done = subprocess.run([build / "fuzzers" / name, *folders], env=environment, stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL, text=True, check=True)
    # An input may make the code under test write to the output as well.
    return int(done.stdout.split()[-1]), run_lines(build, sources)
