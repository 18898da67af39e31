#!/usr/bin/env python3
"""Holds the texts in the code against the catalogues: none missing, none unused, placeholders kept.

The Norwegian one has every text. The English one has Linux's word for what the code calls by its macOS name.

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


# What a Linux desktop has no such thing of, or calls otherwise. A combination that is shown as the desktop
# writes it never gets here; these are words within texts.
MACOS = re.compile(r"\b(?:Mac|macOS|Finder|Dock|Metal|Apple|System Settings|Application Support|Globe)\b|"
                   r"[Mm]enu[- ]bar|Privacy & Security|[⌘⌥⌃⇧]")


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


def placeholders(text):
    return sorted(re.findall(r"%(?:\d|n|L\d)", text))


def problems_of(name, catalogue, keys):
    for key, text in catalogue.items():
        if key not in keys:
            yield f"{name}: nothing uses “{key}”"
        if placeholders(key) != placeholders(text):
            yield f"{name}: “{text}” has other placeholders than “{key}”"
        if MACOS.search(text) and text != key:
            yield f"{name}: “{text}” names something of macOS"


def main():
    root = Path(sys.argv[1])
    keys = keys_in_code(root)
    norwegian = dict(entries(root / "i18n/tulvane_nb.ts"))
    english = dict(entries(root / "i18n/tulvane_en.ts"))
    problems = [f"{keys[key]}: no Norwegian for “{key}”" for key in keys if not norwegian.get(key)]
    problems += [f"{keys[key]}: no word of Linux's in i18n/tulvane_en.ts for “{key}”"
                 for key in keys if MACOS.search(key) and not english.get(key)]
    problems += problems_of("i18n/tulvane_nb.ts", norwegian, keys)
    problems += problems_of("i18n/tulvane_en.ts", english, keys)
    if not keys:
        problems.append("no text was found in the code: this check looks for the wrong thing")
    for problem in problems:
        print(problem)
    sys.exit(1 if problems else 0)


main()
