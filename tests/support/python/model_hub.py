"""A model hub of a test's own: the server process of tests/support/hub_server.py, which misbehaves as told."""
import json
import subprocess
import sys
from pathlib import Path


class ModelHub:
    def __init__(self, folder):
        self.folder = Path(folder)
        self.folder.mkdir()
        self.faults, self.version = {}, 0
        server = Path(__file__).parent.parent / "hub_server.py"
        self.process = subprocess.Popen([sys.executable, str(server), str(self.folder)], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, text=True)
        self.address = f"http://127.0.0.1:{int(self.process.stdout.readline())}/"

    def put_sparse(self, path, size):
        """A file that begins like a model and takes no room."""
        file = self.folder / "files" / path
        file.parent.mkdir(parents=True, exist_ok=True)
        with open(file, "wb") as written:
            written.write(b"lmgg")
            written.truncate(size)

    def script(self, path, *faults):
        """What happens to the next requests of the path, one after the other."""
        self.version += 1  # the server notices a change by the text
        self.faults = {**self.faults, "/" + path: list(faults), "version": self.version}
        file = self.folder / "script.new"
        file.write_text(json.dumps(self.faults))
        file.rename(self.folder / "script.json")

    def requests(self):
        file = self.folder / "requests"
        return [json.loads(line) for line in file.read_text().splitlines()] if file.exists() else []

    def end(self):
        self.process.stdin.close()
        self.process.wait(10)
        self.process.stdout.close()
