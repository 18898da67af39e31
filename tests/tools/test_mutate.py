"""What tools/mutate changes in a source, and that many changes stand in one source without touching each other."""
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tools/mutation"))
from changes import mutants  # noqa: E402
from schemata import VARIABLE, Schema, body_of  # noqa: E402

SOURCE = """#include <cstdio>

int calls = 0;

void call()
{
    ++calls;
}

int most(int a, int b)
{
    if (a > b)
        return a;
    return b;
}

int main()
{
    call();
    std::printf("%d %d", most(2, 1), calls);
}
"""


def changes_of(*lines):
    text = "\n".join(["{", *lines, "}"])
    return [mutant.after.strip() for mutant in mutants("x.cpp", text)]


class Changes(unittest.TestCase):
    def test_an_operator_a_constant_and_a_negation(self):
        self.assertEqual(changes_of("    if (a < 5 && !done)"),
                         ["if (a <= 5 && !done)", "if (a < 5 || !done)", "if (a < 6 && !done)", "if (a < 5 && done)"])

    def test_a_statement_and_the_order_of_two(self):
        self.assertEqual(changes_of("    first();", "    m_on = second();"),
                         ["{}", "{}", "m_on = second();\n    first();"])

    def test_the_order_of_two_assignments_is_left_alone(self):
        self.assertEqual(changes_of("    m_a = x;", "    m_b = y;"), ["{}", "{}"])

    def test_a_statement_under_a_condition_keeps_its_place(self):
        self.assertIn("{}", changes_of("    if (on)", "        call();"))

    def test_what_cannot_be_seen_is_left_alone(self):
        self.assertEqual(changes_of('    qCWarning(lcApp, "1 < 2 %d",', "              a + 1);", "    list.reserve(5 + 1);",
                                    "    // a < b", '    say("a < b && 5");'), ["{}"])

    def test_a_types_brackets_are_no_operators(self):
        self.assertEqual(changes_of("    const QList<int>& x = y;", "    const int* p = q;"), [])


class Schemata(unittest.TestCase):
    def made(self):
        changes = {number: mutant for number, mutant in enumerate(mutants("x.cpp", SOURCE), 1) if body_of(mutant, SOURCE)}
        return Schema(SOURCE, changes)

    def build(self, schema, folder):
        path = Path(folder) / "x.cpp"
        path.write_text(schema.source())
        return subprocess.run(["c++", "-o", Path(folder) / "x", path], capture_output=True, text=True)

    def test_each_number_runs_its_change_and_none_runs_the_source(self):
        schema = self.made()
        numbers = {mutant.after.strip(): number for number, mutant in schema.changes.items()}
        with tempfile.TemporaryDirectory() as folder:
            self.assertEqual(self.build(schema, folder).returncode, 0)

            def said(number):
                return subprocess.run([Path(folder) / "x"], env={**os.environ, VARIABLE: str(number)}, capture_output=True,
                                      text=True).stdout
            self.assertEqual(said(0), "2 1")
            self.assertEqual(said(numbers["if (a >= b)"]), "2 1")
            self.assertEqual(said(numbers["--calls;"]), "2 -1")
            self.assertEqual(said(numbers["{}"]), "", "the last statement that is left out is the one that prints")

    def test_what_the_compiler_refuses_is_named_and_the_rest_stays(self):
        text = SOURCE.replace("    call();", "    int y;\n    y = 1;\n    static_cast<void>(y);\n    call();")
        changes = dict(enumerate(mutants("x.cpp", text), 1))
        schema = Schema(text, {number: mutant for number, mutant in changes.items() if body_of(mutant, text)})
        wrong = next(number for number, mutant in schema.changes.items() if mutant.before.strip() == "call();")
        broken = schema.changes[wrong]
        schema.changes[wrong] = type(broken)(broken.file, broken.line, broken.before, "    unknown();")
        with tempfile.TemporaryDirectory() as folder:
            refused = schema.blamed(self.build(schema, folder).stderr, "x.cpp")
            self.assertEqual(refused, {wrong})
            self.assertEqual(self.build(schema.without(refused), folder).returncode, 0)

    def test_a_constant_outside_of_a_function_is_not_among_them(self):
        self.assertIsNone(body_of(next(mutants("x.cpp", SOURCE)), SOURCE))


if __name__ == "__main__":
    unittest.main()
