"""What can be changed in a source, one thing at a time: an operator, a constant, a condition, a statement, or the order
of two statements. What nothing outside can see is left alone: the log's lines, and how much memory is reserved."""
import re
from dataclasses import dataclass

SWAPS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==", "&&": "||", "||": "&&", "+": "-", "-": "+",
         "*": "/", "/": "*", "+=": "-=", "-=": "+=", "++": "--", "--": "++", "true": "false", "false": "true"}
# Operators stand between spaces in this tree, so that what is a template's bracket or a pointer is none.
OPERATOR = re.compile(r"(?<= )(<=|>=|==|!=|&&|\|\||\+=|-=|<|>|\+|-|\*|/)(?= )|\b(true|false)\b|(\+\+|--)")
NUMBER = re.compile(r"(?<![\w.'\"])(\d+)(?![\w.'\"])")
NEGATION = re.compile(r"(?<=[(&| ])!(?=[\w(])")
# A whole statement of its own: a call or an assignment.
STATEMENT = re.compile(r"^ {4,}(?! |return|break|continue|using|const |auto |static|constexpr|delete|throw"
                       r"|co_return|case|default)[*\w:>.\-]+(\(| = |\+\+|--)[^{}]*;$")
# Where a line ends one of these ways, the next one begins a statement.
END = re.compile(r"[;{}:]$|^\s*(if|for|while) \(.*\)$|^\s*else$|^$")
NO_CODE = re.compile(r"^\s*(#|Q_ASSERT|static_assert|Q_UNREACHABLE|template|using|namespace)|\breserve\(")
LOG = re.compile(r"\bqC(Debug|Info|Warning|Critical)\(")


@dataclass(frozen=True)
class Mutant:
    file: str  # below the tree
    line: int  # from 1
    before: str  # one line, or two whose order changes
    after: str

    def __str__(self):
        return f"{self.file}: `{one_line(self.before)}` => `{one_line(self.after)}`"

    def applied_to(self, text):
        lines = text.splitlines()
        lines[self.line - 1:self.line - 1 + len(self.before.splitlines())] = self.after.splitlines()
        return "\n".join(lines) + "\n"


def one_line(code):
    return " ".join(line.strip() for line in code.splitlines())


def blank_texts(line):
    """The line with what stands in quotes, and its comment, as spaces of the same length."""
    line = re.sub(r'"(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\])\'', lambda found: " " * len(found[0]), line)
    return re.sub(r"//.*", lambda found: " " * len(found[0]), line)


def within(line, code):
    """The lines that one change inside the line makes of it."""
    for found in OPERATOR.finditer(code):
        yield line[:found.start()] + SWAPS[found[0]] + line[found.end():]
    for found in NUMBER.finditer(code):
        yield line[:found.start()] + str(int(found[0]) + 1) + line[found.end():]
    for found in NEGATION.finditer(code):
        yield line[:found.start()] + line[found.end():]


def code_of(lines):
    """Each line's code without texts and comments; nothing where it is of the kind that cannot be seen."""
    inside_log = False
    for line in lines:
        code = blank_texts(line).rstrip()
        inside_log = inside_log or LOG.search(code) is not None
        yield "" if inside_log or NO_CODE.search(code) else code
        inside_log = inside_log and not code.endswith(";")


def indentation(line):
    return line[:len(line) - len(line.lstrip())]


def in_order(first, second):
    """Whether the order of two statements can be seen; of two assignments it seldom can."""
    return indentation(first) == indentation(second) and not (" = " in first and " = " in second)


def mutants(file, text):
    lines = text.splitlines()
    codes = list(code_of(lines))
    begins = [number == 0 or END.search(codes[number - 1]) for number in range(len(lines))]
    alone = [begins[number] and STATEMENT.match(code) is not None for number, code in enumerate(codes)]
    for number, (line, code) in enumerate(zip(lines, codes)):
        for after in within(line, code):
            yield Mutant(file, number + 1, line, after)
        if alone[number]:
            yield Mutant(file, number + 1, line, indentation(line) + "{}")
        if number > 0 and alone[number] and alone[number - 1] and in_order(lines[number - 1], line):
            yield Mutant(file, number, f"{lines[number - 1]}\n{line}", f"{line}\n{lines[number - 1]}")
