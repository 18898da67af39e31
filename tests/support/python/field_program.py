"""A program with one field, which tells in lines of JSON what stands in it."""
import json
import subprocess
import threading

READY = 30  # seconds


class FieldProgram:
    """In front once this returns. `environment`: what it has besides the desktop's."""

    def __init__(self, desktop, *command, **environment):
        self.desktop, self.last = desktop, 0
        before, desktop.environment = desktop.environment, dict(desktop.environment, **environment)
        try:
            self.process = desktop.start(*command, stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        finally:
            desktop.environment = before
        # On a desktop that never shows the window, or whose X server hangs, the suite fails with that reason.
        limit = threading.Timer(READY, self.process.kill)
        limit.start()
        try:
            while self.answer().get("event") != "ready":
                pass
        finally:
            limit.cancel()

    def answer(self):
        line = self.process.stdout.readline()
        if not line:
            raise TimeoutError("the program with the field ended, or never came to the front")
        return json.loads(line)

    def report(self):
        self.last += 1
        self.process.stdin.write(json.dumps({"id": self.last, "do": "report"}) + "\n")
        self.process.stdin.flush()
        while True:
            answer = self.answer()
            if answer.get("id") == self.last:
                return answer

    def text(self):
        return self.report()["text"]

    def has_focus(self):
        return self.report()["focus"] == "field"

    def end(self):
        self.process.terminate()
        self.process.wait(5)
