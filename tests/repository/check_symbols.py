#!/usr/bin/env python3
"""Holds the drawn symbols to the family's rules, so that each can be tinted and rendered like every other.

    check_symbols.py ROOT            prints what breaks a rule; status 1 if there is anything
    check_symbols.py ROOT --self     proves on made-up drawings that each broken rule is found
"""
import re
import sys
import tempfile
import xml.etree.ElementTree as ElementTree
from pathlib import Path

NAMESPACE = "{http://www.w3.org/2000/svg}"
NAME = re.compile(r"[a-z0-9]+(?:\.[a-z0-9]+)*\.svg")
NUMBER = re.compile(r"-?(?:\d+\.?\d*|\.\d+)")
# Qt draws only a part of SVG and passes over the rest; these it draws faithfully.
PAINT = {"fill", "stroke", "stroke-width", "stroke-linecap", "stroke-linejoin"}
ELEMENTS = {
    "svg": {"width", "height", "viewBox"},
    "g": PAINT,
    "path": PAINT | {"d", "fill-rule"},
    "rect": PAINT | {"x", "y", "width", "height", "rx"},
    "circle": PAINT | {"cx", "cy", "r"},
    "line": PAINT | {"x1", "y1", "x2", "y2"},
    "polyline": PAINT | {"points"},
}
# The program tints what is opaque, so a second colour would be lost; one pen makes the family one family.
VALUES = {
    "fill": {"none", "#000"},
    "stroke": {"none", "#000"},
    "stroke-width": {"1.75"},
    "stroke-linecap": {"round"},
    "stroke-linejoin": {"round"},
    "fill-rule": {"evenodd"},
}
SHAPES = {"path", "rect", "circle", "line", "polyline"}
# An empty one would be a shape that nobody sees.
NEEDED = {"path": {"d"}, "rect": {"width", "height"}, "circle": {"r"}, "line": {"x1", "y1", "x2", "y2"},
          "polyline": {"points"}}
ICON = "com.dunio.Tulvane"


def element_problems(element):
    kind = element.tag.removeprefix(NAMESPACE)
    if not element.tag.startswith(NAMESPACE) or kind not in ELEMENTS:
        yield f"<{kind}> is not for symbols"
        return
    for attribute, value in element.attrib.items():
        if attribute not in ELEMENTS[kind]:
            yield f"<{kind}> must not have “{attribute}”"
        elif attribute in VALUES and value not in VALUES[attribute]:
            yield f"{attribute}=\"{value}\" is not the family's"
        elif attribute not in VALUES and attribute not in {"d", "points", "viewBox"} and not NUMBER.fullmatch(value):
            yield f"{attribute}=\"{value}\" is no plain number"
    for attribute in NEEDED.get(kind, ()):
        if not element.get(attribute, "").strip():
            yield f"<{kind}> without “{attribute}” draws nothing"
    if (element.text or "").strip() or (element.tail or "").strip():
        yield f"text in or after <{kind}>"


def drawing_problems(path, side):
    """What is wrong with one drawing, whose canvas is side × side units."""
    try:
        root = ElementTree.parse(path).getroot()
    except ElementTree.ParseError as error:
        yield f"does not parse: {error}"
        return
    if root.tag != NAMESPACE + "svg":
        yield "is no SVG"
        return
    if root.get("viewBox") != f"0 0 {side} {side}":
        yield f"its canvas is not 0 0 {side} {side}"
    if not any(element.tag.removeprefix(NAMESPACE) in SHAPES for element in root.iter()):
        yield "draws nothing"


def symbol_problems(path):
    if not NAME.fullmatch(path.name):
        yield "a symbol's file is its name in small letters, words parted by full stops, and .svg"
        return
    yield from drawing_problems(path, 24)
    try:
        for element in ElementTree.parse(path).iter():
            yield from element_problems(element)
    except ElementTree.ParseError:
        return  # told above


def icon_problems(folder):
    for name, side in ((f"{ICON}.svg", 512), (f"{ICON}-symbolic.svg", 16)):
        if not (folder / name).is_file():
            yield name, "is missing"
            continue
        for problem in drawing_problems(folder / name, side):
            yield name, problem
        # Desktops recolour the fills of a symbolic icon and nothing else.
        if side == 16 and "stroke" in (folder / name).read_text(encoding="utf-8"):
            yield name, "has a stroke, which desktops do not recolour"


def problems(root):
    folder = Path(root) / "resources/symbols"
    seen = {}
    for path in sorted(folder.iterdir()) if folder.is_dir() else ():
        for problem in symbol_problems(path):
            yield f"resources/symbols/{path.name}: {problem}"
        content = path.read_bytes()
        if content in seen:
            yield f"resources/symbols/{path.name}: the same, byte for byte, as {seen[content]}"
        seen.setdefault(content, path.name)
    if not seen:
        yield "no symbol was found: this check looks in the wrong place"
    for name, problem in icon_problems(Path(root) / "resources/icons"):
        yield f"resources/icons/{name}: {problem}"


def drawing(inside, side=24, more=""):
    return f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {side} {side}"{more}>{inside}</svg>'


def made_up_cases():
    """File below resources/, its content, and a piece of the problem to be found; None where all is well."""
    dot = '<circle cx="12" cy="12" r="9.125"/>'
    yield "symbols/good.fill.svg", drawing(f'<g fill="#000" stroke-width="1.75">{dot}</g>'), None
    yield "symbols/broken.svg", "<svg", "does not parse"
    yield "symbols/html.svg", "<html/>", "is no SVG"
    yield "symbols/wide.svg", drawing(dot, side=32), "canvas"
    yield "symbols/empty.svg", drawing("<g/>"), "draws nothing"
    yield "symbols/point.svg", drawing('<circle cx="1" cy="1"/>'), "without “r”"
    yield "symbols/masked.svg", drawing(dot + "<mask/>"), "<mask> is not for symbols"
    yield "symbols/foreign.svg", drawing(dot + '<g xmlns="urn:other"/>'), "is not for symbols"
    yield "symbols/styled.svg", drawing('<path d="M1 1h9" style="fill:#000"/>'), "must not have “style”"
    yield "symbols/turned.svg", drawing(dot, more=' transform="scale(2)"'), "must not have “transform”"
    yield "symbols/white.svg", drawing('<path fill="#fff" d="M1 1h9"/>'), 'fill="#fff"'
    yield "symbols/themed.svg", drawing('<path stroke="currentColor" d="M1 1h9"/>'), "currentColor"
    yield "symbols/thin.svg", drawing('<path stroke-width="1" d="M1 1h9"/>'), "stroke-width"
    yield "symbols/relative.svg", drawing('<rect width="50%" height="4"/>'), "no plain number"
    yield "symbols/spoken.svg", drawing(dot + "word"), "text in or after"
    yield "symbols/Large.svg", drawing(dot), "small letters"
    yield "symbols/photo.png", "", "small letters"
    yield "symbols/twin.svg", drawing("<g>" + dot + "</g>"), "byte for byte"
    yield f"icons/{ICON}.svg", drawing(dot, side=256), "canvas"
    yield f"icons/{ICON}-symbolic.svg", drawing('<path stroke="#000" d="M1 1h9"/>', side=16), "do not recolour"
    yield f"icons/{ICON}-symbolic.svg", None, "is missing"


def found_in(files):
    with tempfile.TemporaryDirectory() as root:
        for name, content in files.items():
            path = Path(root) / "resources" / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(content, encoding="utf-8")
        return list(problems(root))


def self_check():
    dot = '<circle cx="12" cy="12" r="9.125"/>'
    well = {"symbols/circle.svg": drawing("<g>" + dot + "</g>"), f"icons/{ICON}.svg": drawing(dot, side=512),
            f"icons/{ICON}-symbolic.svg": drawing(dot, side=16)}
    for name, content, expected in made_up_cases():
        files = {key: value for key, value in (well | {name: content}).items() if value is not None}
        found = found_in(files)
        if (expected is None and found) or (expected and not any(expected in line for line in found)):
            sys.exit(f"{name}: expected {expected or 'no problem'}, found {found}")
    if not any("wrong place" in line for line in found_in({"icons/other.svg": ""})):
        sys.exit("an empty folder passes")


def main():
    if "--self" in sys.argv:
        self_check()
        return
    found = list(problems(sys.argv[1]))
    for line in found:
        print(line)
    sys.exit(1 if found else 0)


main()
