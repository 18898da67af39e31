"""Who speaks: the voices of training, and the six that training never hears."""
import random

from .espeak import Voice

HELD_OUT_VARIANTS = ["m8", "f5", "Annie", "Marco", "john", "belinda"]
_COMMON = ["m1", "m2", "m3", "m4", "m5", "m6", "m7", "f1", "f2", "f3", "f4"]
_OTHER = """Alex Alicia Andrea Andy Denis Diogo Gene Gene2 Henrique Hugo Jacky Lee Mario Michael Mike Nguyen
RicishayMax RicishayMax2 RicishayMax3 Storm Tweaky adam anika announcer antonio aunty benjamin boris caleb david ed
edward edward2 grandma grandpa gustave iven iven2 iven3 iven4 kaukovalta klatt klatt2 klatt3 klatt4 klatt5 klatt6 linda
marcelo max michel miguel norbert pablo paul pedro quincy rob robert sandro shelby steph steph2 steph3 travis victor
zac""".split()
EARLIER_VARIANTS = ["", *_COMMON, *"Alex Andrea Denis Hugo Michael linda steph2 ed travis klatt4".split()]
TRAINING_VARIANTS = [""] * 8 + _COMMON * 2 + _OTHER
_ENGLISH = ["en-us"] * 4 + ["gmw/en"] * 3 + ["en-gb-x-rp", "en-gb-scotland", "en-gb-x-gbclan"]


def random_voice(rng: random.Random, kind: str, variants: list) -> Voice:
    """A voice for a sentence of `kind` "no", "nn" or "en". espeak-ng has one Norwegian voice for both forms."""
    language = rng.choice(_ENGLISH) if kind == "en" else "nb"
    variant = rng.choice(variants)
    if variant == "" and rng.random() < 0.3:
        return Voice(language)
    rate = rng.gauss(168, 28) if rng.random() < 0.7 else rng.uniform(100, 280)
    pitch = 50 if rng.random() < 0.3 else rng.randint(15, 85)
    gap = rng.choice([0, 0, 0, 0, 1, 3, 6])
    return Voice(language, variant, int(min(280, max(100, rate))), pitch, gap)
