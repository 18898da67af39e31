"""How wrong a transcript is."""
import re
from dataclasses import dataclass, field


def normalised(text: str) -> list:
    """Words in lower case without marks: what a word error rate counts."""
    return re.sub(r"[^\w' ]", " ", text.lower()).split()


def distance(expected: list, heard: list) -> int:
    """The fewest words to put in, take out or replace."""
    row = list(range(len(heard) + 1))
    for i, word in enumerate(expected, 1):
        diagonal, row[0] = row[0], i
        for j, other in enumerate(heard, 1):
            diagonal, row[j] = row[j], min(row[j] + 1, row[j - 1] + 1, diagonal + (word != other))
    return row[-1]


@dataclass
class ErrorRate:
    errors: int = 0
    words: int = 0
    exact: int = 0
    takes: int = 0
    wrong: list = field(default_factory=list)

    def add(self, expected: str, heard: str):
        errors = distance(normalised(expected), normalised(heard))
        self.errors += errors
        self.words += len(normalised(expected))
        self.exact += expected == heard.strip()
        self.takes += 1
        if errors:
            self.wrong.append((expected, heard.strip()))

    @property
    def percent(self) -> float:
        return 100.0 * self.errors / max(1, self.words)
