"""Inflected forms of the words in the word lists, as slots for the patterns."""


def _items(lines) -> list:
    from .grammar import split_pair

    return [split_pair(item) for line in lines for item in line.split(";") if item.strip()]


def _stems(item: str) -> tuple:
    plain, _, inflected = item.partition("/")
    return plain, inflected or plain


def _join(stem: str, ending: str) -> str:
    return stem[:-1] + ending if stem.endswith("e") and ending[0] in "aei" else stem + ending


_BOKMAL = {  # article, definite, plural, definite plural
    "masculine": ("en", "en", "er", "ene"),
    "feminine": ("en", "a", "er", "ene"),
    "neuter": ("et", "et", "", "ene"),
}
_NYNORSK = {
    "masculine": ("ein", "en", "ar", "ane"),
    "feminine": ("ei", "a", "er", "ene"),
    "neuter": ("eit", "et", "", "a"),
}


def _plural(stem: str, plain: str, ending: str, short: bool) -> str:
    if ending:
        return _join(stem, ending)
    return plain if short else _join(stem, "er")


def _noun(item: str, gender: str, endings: dict, nynorsk: bool) -> tuple:
    plain, stem = _stems(item)
    article, definite, plural, definite_plural = endings[gender]
    vowels = sum(letter in "aeiouyæøå" for letter in plain)
    return (
        f"{article} {plain}",
        _join(stem, definite),
        _plural(stem, plain, plural, nynorsk or vowels == 1),
        _join(stem, definite_plural),
    )


def _spaced(word: str) -> str:
    return word.replace("-", " ")


def norwegian(sections: dict) -> dict:
    slots = {name: [] for name in ("indefinite", "definite", "plural", "definites")}
    for gender in _BOKMAL:
        for first, second in _items(sections[gender]):
            pairs = zip(_noun(first, gender, _BOKMAL, False), _noun(second, gender, _NYNORSK, True))
            for name, pair in zip(slots, pairs):
                slots[name].append(pair)
    verbs = ("base", "present", "past", "perfect")
    slots.update({name: [] for name in verbs})
    for line in sections["verbs"]:
        first, _, second = line.partition("|")
        for name, pair in zip(verbs, zip(first.split(), (second or first).split())):
            slots[name].append(tuple(map(_spaced, pair)))
    slots["inflected"] = []
    for line in sections["adjectives"]:
        first, _, second = line.partition("|")
        slots["inflected"] += list(zip(first.split(), (second or first).split()))
    slots["adverb"] = _items(sections["adverbs"])
    return slots


def _english_plural(noun: str) -> str:
    if noun.endswith(("s", "sh", "ch", "x", "tomato", "potato")):
        return noun + "es"
    if noun.endswith("y") and noun[-2] not in "aeiou":
        return noun[:-1] + "ies"
    irregular = {"knife": "knives", "foot": "feet", "shelf": "shelves"}
    return irregular.get(noun, noun + "s")


_DOUBLED = {"stop", "plan", "get", "forget", "put", "cut", "win"}


def _english_ing(verb: str) -> str:
    if verb in _DOUBLED:
        return verb + verb[-1] + "ing"
    return verb[:-1] + "ing" if verb.endswith("e") and not verb.endswith(("ee", "ye")) else verb + "ing"


def _english_past(verb: str) -> str:
    if verb in _DOUBLED:
        return verb + verb[-1] + "ed"
    if verb.endswith("y") and verb[-2] not in "aeiou":
        return verb[:-1] + "ied"
    return verb + ("d" if verb.endswith("e") else "ed")


def english(sections: dict) -> dict:
    nouns = [item[0] for item in _items(sections["nouns"])]
    verbs = [(item[0], _english_past(item[0]), _english_past(item[0])) for item in _items(sections["regular verbs"])]
    verbs += [tuple(item[0].split()) for item in _items(sections["irregular verbs"])]
    forms = {
        "noun": nouns,
        "nouns": [_english_plural(noun) for noun in nouns],
        "base": [verb[0] for verb in verbs],
        "base_s": [_english_plural(verb[0]) for verb in verbs],
        "base_ing": [_english_ing(verb[0]) for verb in verbs],
        "past": [verb[1] for verb in verbs],
        "perfect": [verb[2] for verb in verbs],
        "quality": [item[0] for item in _items(sections["adjectives"])],
        "adverb": [item[0] for item in _items(sections["adverbs"])],
    }
    return {name: [(word, word) for word in words] for name, words in forms.items()}
