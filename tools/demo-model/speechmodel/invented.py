"""Words that exist in no list: they teach the model to spell what it hears."""
import random

_NORWEGIAN = dict(
    onsets="b d f g h j k l m n p r s t v br bl dr fl fr gr kl kr pl pr sk sl sm sn sp st str tr sv kn".split(),
    nuclei="a a a e e i i o o u y æ ø å ei au øy".split(),
    codas=["", "", "n", "r", "l", "s", "t", "k", "m", "nd", "rt", "st", "ng", "ll", "nn", "kk", "tt", "ss", "mm", "ld"],
    endings="e en er et a ing else heim vik dal sund berg stad nes land by sen skap het lig bukt haug mo".split(),
)
_ENGLISH = dict(
    onsets="b d f g h j k l m n p r s t v w br bl dr fl fr gr cl cr pl pr sc sl sm sn sp st str tr sh ch th".split(),
    nuclei="a a e e i i o o u ee oo ai ea ou".split(),
    codas=["", "n", "r", "l", "ss", "t", "ck", "m", "nd", "rt", "st", "ng", "ll", "sh", "nt", "mp", "d", "p", "b"],
    endings="er ing ed ly ton son ley ford ness ment y able field wood ham burg well ers ings man land".split(),
)


def invented_word(rng: random.Random, language: str) -> str:
    """A pronounceable word in the spelling of the language: one to three syllables, often with an ending."""
    parts = _NORWEGIAN if language == "no" else _ENGLISH
    word = ""
    for _ in range(rng.choices([1, 2, 3], [0.5, 0.42, 0.08])[0]):
        word += rng.choice(parts["onsets"]) + rng.choice(parts["nuclei"]) + rng.choice(parts["codas"])
    if rng.random() < 0.6 or len(word) < 4:
        word += rng.choice(parts["endings"])
    return word
