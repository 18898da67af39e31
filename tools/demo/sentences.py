"""What is spoken, and how much of it came out."""

SENTENCES = [  # the language that is set, espeak-ng's voice, the sentence
    ("no", "nb", "God morgen, jeg heter Kari og bor i Bergen."),
    ("no", "nb", "I dag er det fint vær, og vi skal gå en tur."),
    ("nn", "nb", "Eg heiter Solveig, og eg kjem frå Noreg."),
    ("nn", "nb", "Korleis går det med deg?"),
    ("en", "en-us", "Good morning, my name is John and I live in London."),
    ("en", "en-us", "Can you send the report tomorrow?"),
]
RECOGNISABLE = 0.5  # of the words


def words(text):
    return [word.strip(".,?!").lower() for word in text.split()]


def share(said, heard):
    """The share of what was said that was heard, in order (a longest common subsequence of words)."""
    a, b = words(said), words(heard)
    row = [0] * (len(b) + 1)
    for x in a:
        before = 0
        for j, y in enumerate(b, 1):
            row[j], before = (before + 1 if x == y else max(row[j], row[j - 1])), row[j]
    return row[-1] / max(len(a), 1)


def complaints(arrived, editor):
    """What is wrong, in words. `arrived`: the text of each sentence, None for one that was lost. `editor`: all that
    stands in the editor, where each sentence has a line."""
    found = []
    for (_, _, said), text in zip(SENTENCES, arrived, strict=True):
        if text is None:
            found.append(f"Lost: {said}")
        elif share(said, text) < RECOGNISABLE:
            found.append(f"Fewer than half of the words of: {said}")
    if editor != "\n".join(text or "" for text in arrived):
        found.append(f"In the editor stands something else than what arrived:\n{editor}")
    return found
