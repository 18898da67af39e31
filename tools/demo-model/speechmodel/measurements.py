"""The measurements: each prints one Markdown table."""
from collections import defaultdict
from dataclasses import dataclass
from pathlib import Path

from .corpus import KINDS, Corpus
from .metrics import ErrorRate, normalised
from .recogniser import recognise, request

_UNRELATED = "Møteplan, budsjett, Solveig, Trondheim, invoice, Friday."
_UNKNOWN = "Tulvane, Kvernhusvik, Østensjø, Bragernes, Q3, Zetterlund, Hjelmeland AS."
WINDOW = 30  # seconds


@dataclass(frozen=True)
class Bench:
    """What is measured, with what. Sizes are in bytes."""

    program: Path
    model: Path
    data: Path
    threads: int
    limit: int
    show: int
    packed_size: int
    size: int

    def run(self, name: str, language=lambda item: item["kind"], prompt: str = "", limit: int = 0) -> tuple:
        """Load time, and every take of a set with the recogniser's answer."""
        base = self.data / name
        items = Corpus(base).entries[: min(self.limit, limit or self.limit)]
        requests = [request(item, language(item), prompt) for item in items]
        load, answers = recognise(self.program, self.model, base, requests, self.threads)
        return load, list(zip(items, answers))


def expected(item: dict, language: str) -> str:
    """What is to be written when `language` was asked for or found: Norwegian has two written forms."""
    written = item["written"]
    return written.get(language, written.get(item["kind"], item["spoken"]))


def table(title: str, head: list, rows: list):
    print(f"\n{title}\n")
    print("| " + " | ".join(head) + " |")
    print("|" + "---|" * len(head))
    for row in rows:
        print("| " + " | ".join(str(cell) for cell in row) + " |")
    print(flush=True)


def _rates(results: list, key) -> dict:
    rates = defaultdict(ErrorRate)
    for item, answer in results:
        text = expected(item, answer.language)
        for name in (key(item), "all"):
            rates[name].add(text, answer.text)
    return rates


def _row(name: str, rates: dict) -> list:
    cells = [f"{rates[kind].percent:.1f} %" if kind in rates else "" for kind in KINDS + ["all"]]
    return [name, *cells, f"{rates['all'].exact} of {rates['all'].takes}"]


def _show(bench: Bench, rates: dict):
    for text, heard in rates["all"].wrong[: bench.show]:
        print(f"    {text}\n  > {heard}")


def sentences(bench: Bench):
    sets = {"unseen sentences": "earlier-sentences", "unseen sentences, unseen voices": "earlier-voices",
            "unseen sentences, wider patterns": "sentences", "the same, unseen voices": "voices",
            "by hand": "handwritten"}
    rows = []
    for title, name in sets.items():
        for mode in ("own", "auto"):
            language = (lambda item: item["kind"]) if mode == "own" else (lambda item: "auto")
            _, results = bench.run(name, language, limit=0 if mode == "own" else 150)
            rates = _rates(results, lambda item: item["kind"])
            rows.append(_row(f"{title}, {'language given' if mode == 'own' else 'language found'}", rates))
            _show(bench, rates)
    table("Word error rate", ["set", "no", "nn", "en", "all", "exact with marks"], rows)


def speeds(bench: Bench):
    _, results = bench.run("speeds")
    rows = []
    for speed in ("slow", "normal", "fast"):
        for noise in ("clean", "20 dB"):
            chosen = [pair for pair in results if (pair[0]["speed"], pair[0]["noise"]) == (speed, noise)]
            if chosen:
                rows.append(_row(f"{speed}, {noise}", _rates(chosen, lambda item: item["kind"])))
    table("Word error rate by speaking speed (130, 175, 230 words a minute) and noise",
          ["speech", "no", "nn", "en", "all", "exact with marks"], rows)


def prompts(bench: Bench):
    long_text = " ".join(item["spoken"] for item in Corpus(bench.data / "earlier-voices").entries[:12])
    choices = {"none": "", "six known words": _UNRELATED, "seven unknown words": _UNKNOWN, "a text of 12 takes": long_text}
    rows = []
    for title, prompt in choices.items():
        _, results = bench.run("earlier-sentences", prompt=prompt, limit=150)
        rows.append(_row(title, _rates(results, lambda item: item["kind"])))
    table("Word error rate with a vocabulary prompt (unseen sentences)",
          ["prompt", "no", "nn", "en", "all", "exact with marks"], rows)


def _near_edge(start: float) -> bool:
    """Whether a word of about half a second that starts here touches the edge of a 30 s window."""
    return start > 1 and min(start % WINDOW, -start % WINDOW) < 0.6


def _marker_counts(results: list) -> tuple:
    total = lost = edge = edge_lost = 0
    missing = []
    for item, answer in results:
        words = normalised(answer.text)
        for marker, start in item["markers"]:
            gone = marker not in words
            total, lost = total + 1, lost + gone
            if _near_edge(start):
                edge, edge_lost = edge + 1, edge_lost + gone
            if gone:
                missing.append(f"{marker} {start:.1f}")
    return total, lost, edge, edge_lost, missing


def takes(bench: Bench):
    _, results = bench.run("takes")
    rows = []
    for running in (False, True):
        for seconds in sorted({item["seconds"] for item, _ in results}):
            chosen = [pair for pair in results if (pair[0]["running"], pair[0]["seconds"]) == (running, seconds)]
            total, lost, edge, edge_lost, missing = _marker_counts(chosen)
            time = sum(answer.milliseconds for _, answer in chosen) / len(chosen) / 1000
            rows.append(["running" if running else "one sentence in 5 s", f"{seconds} s", total, lost, edge, edge_lost,
                         f"{time:.2f} s", ", ".join(missing) or "none"])
    table("Marker words in long takes (three languages, three voices)",
          ["speech", "take", "markers", "lost", "at a window's edge", "of them lost", "time", "lost markers and second"],
          rows)


def without_speech(bench: Bench):
    base = {}
    for language in ("no", "nn", "en", "auto"):
        _, results = bench.run("nothing", lambda item: language)
        for item, answer in results:
            base.setdefault(item["name"], []).append((answer.text.strip(), answer.milliseconds))
    rows = []
    for name, answers in base.items():
        written = ", ".join(f"“{text}”" for text, _ in answers if text)
        rows.append([name, written or "nothing", f"{max(time for _, time in answers):.0f} ms"])
    table("Sounds without speech (languages no, nn, en, auto)", ["sound", "written", "slowest"], rows)


def cost(bench: Bench):
    load, results = bench.run("earlier-sentences", limit=40)
    times = sorted(answer.milliseconds for _, answer in results)
    seconds = sorted(item["length"] / 16000 for item, _ in results)
    rows = [["packed", f"{bench.packed_size / 1e6:.2f} MB"], ["unpacked", f"{bench.size / 1e6:.2f} MB"],
            ["load", f"{load:.0f} ms"],
            [f"decode, median (take of {seconds[len(seconds) // 2]:.1f} s)", f"{times[len(times) // 2]:.0f} ms"],
            ["decode, slowest of 40", f"{times[-1]:.0f} ms"]]
    table(f"Cost with {bench.threads} threads", ["what", "figure"], rows)
