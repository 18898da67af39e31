#!/usr/bin/env python3
"""Holds the texts in the code against the Norwegian catalogue: none missing, none unused, placeholders kept.

    check_catalogues.py ROOT
"""
import re
import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path

# translate("..." "...") with adjacent literals, as the compiler joins them; tables mark theirs with
# QT_TRANSLATE_NOOP("tulvane", "...").
LITERAL = r'"(?:[^"\\]|\\.)*"'
CALL = re.compile(r'(?:(?<!::)\btranslate\(\s*|QT_TRANSLATE_NOOP\(\s*"tulvane"\s*,\s*)((?:' + LITERAL + r"\s*)+)[,)]")
ESCAPES = {r"\"": '"', r"\\": "\\", r"\n": "\n", r"\t": "\t"}


def unescape(text):
    return re.sub(r"\\.", lambda match: ESCAPES.get(match.group(), match.group()), text)


def keys_in_code(root):
    keys = {}
    for file in sorted((root / "src").rglob("*")):
        if file.suffix in {".h", ".cpp", ".mm", ".qml"}:
            for literals in CALL.findall(file.read_text(encoding="utf-8")):
                key = "".join(unescape(piece[1:-1]) for piece in re.findall(LITERAL, literals))
                keys.setdefault(key, file.relative_to(root))
    return keys


def entries(catalogue):
    tree = ElementTree.parse(catalogue)
    for context in tree.getroot().iter("context"):
        for message in context.iter("message"):
            translation = message.find("translation")
            finished = translation.get("type") is None
            yield message.findtext("source"), (translation.text or "") if finished else ""


def main():
    root = Path(sys.argv[1])
    keys = keys_in_code(root)
    catalogue = dict(entries(root / "i18n/tulvane_nb.ts"))
    problems = [f"{keys[key]}: no Norwegian for “{key}”" for key in keys if not catalogue.get(key)]
    problems += [f"i18n/tulvane_nb.ts: nothing uses “{key}”" for key in catalogue if key not in keys]
    for key, text in catalogue.items():
        if sorted(re.findall(r"%(?:\d|n|L\d)", key)) != sorted(re.findall(r"%(?:\d|n|L\d)", text)):
            problems.append(f"i18n/tulvane_nb.ts: “{text}” has other placeholders than “{key}”")
    if not keys:
        problems.append("no text was found in the code: this check looks for the wrong thing")
    for problem in problems:
        print(problem)
    sys.exit(1 if problems else 0)


main()
