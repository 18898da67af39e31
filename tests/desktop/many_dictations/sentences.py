"""Sentences to be spoken: of any length, all different, the same ones for the same seed."""
import random

VOICES = {"no": ["nb", "nb+m3", "nb+f2"], "en": ["en-us", "en-gb", "en-us+f3"]}
PARTS = {
    "no": (["Jeg", "Vi", "Hun", "Naboen", "Læreren", "Toget", "Min bror", "Legen"],
           ["kommer", "skriver", "ringer", "venter", "reiser", "svarer", "begynner", "spør"],
           ["i morgen", "på fredag", "etter møtet", "i Bergen", "før klokken ni", "om en uke", "med en gang", "til våren"]),
    "en": (["I", "We", "She", "The neighbour", "The teacher", "The train", "My brother", "The doctor"],
           ["will come", "wrote", "called", "can wait", "travelled", "answered", "may start", "asked"],
           ["tomorrow", "on Friday", "after the meeting", "in London", "before nine", "in a week", "at once", "last spring"]),
}
WORDS_A_SECOND = 2.4  # of these voices


class Sentences:
    def __init__(self, seed):
        self.random, self.told = random.Random(seed), set()

    def sentence(self, language, seconds):
        """About so long. Never one that was told before."""
        while True:
            clauses, words = [], 0
            while not clauses or words < seconds * WORDS_A_SECOND:
                clauses.append(" ".join(self.random.choice(part) for part in PARTS[language]))
                words += len(clauses[-1].split())
            text = ", ".join(clauses) + "."
            if seconds < 1:
                text = self.random.choice(PARTS[language][0]) + " " + self.random.choice(PARTS[language][1]) + "."
            if text not in self.told:
                self.told.add(text)
                return text

    def voice(self, language):
        return self.random.choice(VOICES[language])
