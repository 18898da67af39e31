#!/usr/bin/env python3
"""Python goes one way: the tests may use what lies in tools/ and bench/, and nothing there uses what lies in tests/.

    check_python.py ROOT            prints what breaks the rule; status 1 if there is anything
    check_python.py ROOT --self     proves on made-up scripts that a broken rule is found
"""
import re
import subprocess
import sys
import tempfile
from pathlib import Path

IMPORT = re.compile(r"^\s*(?:from|import)\s+(\w+)", re.MULTILINE)
PATH = re.compile(r"""^(?!\s*#).*(?:sys\.path|Popen|\brun\(|\.start\().*["'/]tests\b""", re.MULTILINE)


def is_python(path):
    if path.suffix == ".py":
        return True
    if path.suffix or not path.is_file():
        return False
    with open(path, "rb") as file:
        return re.match(rb"#!.*python", file.readline()) is not None


def problems(root, names):
    scripts = [name for name in names if (root / name).is_file() and is_python(root / name)]
    of_tests = {Path(name).stem for name in scripts if name.startswith("tests/")}
    own = {Path(name).stem for name in scripts if not name.startswith("tests/")}
    for name in scripts:
        if name.startswith("tests/"):
            continue
        text = (root / name).read_text(encoding="utf-8")
        for module in IMPORT.findall(text):
            if module in of_tests - own:
                yield f"{name} imports {module}, which lies in tests/"
        if PATH.search(text):
            yield f"{name} uses a path in tests/"


def self_test():
    with tempfile.TemporaryDirectory() as folder:
        root = Path(folder)
        files = {"tests/support/helper.py": "", "tools/kit/shared.py": "",
                 "tools/good": '#!/usr/bin/python3\n"""See tests/support."""\nimport os\nfrom shared import x\n',
                 "tools/wrong": "#!/usr/bin/python3\nimport helper\n",
                 "bench/wrong.py": 'import sys\nsys.path.insert(0, str(ROOT / "tests/support"))\n',
                 "tests/unit/test_it.py": "import helper\nimport shared\n"}
        for name, text in files.items():
            (root / name).parent.mkdir(parents=True, exist_ok=True)
            (root / name).write_text(text)
        found = sorted(problems(root, files))
    expected = ["bench/wrong.py uses a path in tests/", "tools/wrong imports helper, which lies in tests/"]
    if found != expected:
        sys.exit(f"found {found} instead of {expected}")


def main():
    if "--self" in sys.argv:
        self_test()
        return
    root = Path(sys.argv[1])
    listed = subprocess.run(["git", "-C", root, "ls-files", "--cached", "--others", "--exclude-standard"],
                            capture_output=True, text=True, check=True).stdout.splitlines()
    found = list(problems(root, listed))
    print("\n".join(found))
    sys.exit(1 if found else 0)


main()
