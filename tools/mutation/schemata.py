"""Many changes of one source in one compilation: the body of a changed function stands before its own, and runs
in its place where the environment names the change. Reading the headers, which costs most, is so paid once for all of them."""
import re
from dataclasses import dataclass

VARIABLE = "TULVANE_MUTANT"
PROLOGUE = f"""#include <cstdlib>
namespace {{
int numberOfTheChange()
{{
    static const int number = std::atoi(std::getenv("{VARIABLE}"));
    return number;
}}
}}
""".splitlines()
NO_FUNCTION = re.compile(r"\b(class|struct|enum|union|namespace|constexpr|consteval)\b[^()]*(\(|$)")
# What a message of the compiler's is about: the line of the error, or the one that asked for the template with it.
BLAMED = re.compile(r"^[^ ]*?(?P<name>[^/ :]+):(?P<line>\d+):\d+: +(?:error|fatal error|  ?required from)", re.M)


@dataclass(frozen=True)
class Body:
    first: int  # the line after the opening brace, from 1
    last: int  # the line before the closing one


def bodies(text):
    """Of the functions; in this tree their braces stand alone in the first column."""
    lines = text.splitlines()
    opened = None
    for number, line in enumerate(lines, 1):
        if line == "{":
            head = number - 1
            while head > 1 and lines[head - 1].startswith("    "):
                head -= 1
            opened = None if NO_FUNCTION.search(lines[head - 1]) else number
        elif line == "}" and opened:
            yield Body(opened + 1, number - 1)
            opened = None


def body_of(mutant, text):
    last = mutant.line + len(mutant.before.splitlines()) - 1
    return next((body for body in bodies(text) if body.first <= mutant.line and last <= body.last), None)


class Schema:
    """A source with the changes that lie in its functions; each has a number, from 1."""

    def __init__(self, text, changes):
        self.text = text
        self.changes = changes  # by number
        self.ranges = []  # of lines in the source that was made: first, last, number

    def source(self):
        lines = self.text.splitlines()
        before, ends = {}, set()
        for number, mutant in self.changes.items():
            body = body_of(mutant, self.text)
            changed = mutant.applied_to(self.text).splitlines()[body.first - 1:body.last]
            before.setdefault(body.first, []).append((number, changed))
            ends.add(body.last)
        self.ranges = []
        made = list(PROLOGUE)
        for position, line in enumerate(lines, 1):
            for number, changed in before.get(position, []):
                first = len(made) + 1
                made += [f"    if (numberOfTheChange() == {number}) {{", *changed, "    } else"]
                self.ranges.append((first, len(made), number))
            made += ["    {", line] if position in before else [line]
            made += ["    }"] if position in ends else []
        return "\n".join(made) + "\n"

    def blamed(self, messages, name):
        """The changes that the compiler refuses."""
        lines = {int(found["line"]) for found in BLAMED.finditer(messages) if found["name"] == name}
        return {number for first, last, number in self.ranges if any(first <= line <= last for line in lines)}

    def without(self, numbers):
        return Schema(self.text, {number: mutant for number, mutant in self.changes.items() if number not in numbers})
