"""The text side of the demo model: tokens, sentences, error rates. Needs nothing but Python."""
import random
import re
import unittest
from collections import Counter

from speechmodel import inflection, tokens
from speechmodel.grammar import Grammar, finished, sentence_key, split_pair
from speechmodel.invented import invented_word
from speechmodel.metrics import ErrorRate, distance, normalised


def small_vocabulary():
    texts = ["Hei, dette er en test.", "This is a test."] * 30
    return tokens.build_vocabulary(texts, ["blåbærsyltetøy", "skomaker", "skole"], least=20, piece_count=20)


class VocabularyTest(unittest.TestCase):
    def setUp(self):
        self.vocabulary = small_vocabulary()

    def test_every_text_comes_back_as_it_was(self):
        for text in ("Hei, dette er en test.", "Ukjent blåbærsyltetøy på Øya!", "Q3 €5 — ok?", "don't"):
            ids = self.vocabulary.encode(text)
            self.assertEqual(self.vocabulary.decode(ids), " " + text)

    def test_a_taught_word_is_one_token_and_an_untaught_one_is_spelled(self):
        self.assertEqual(len(self.vocabulary.encode("test")), 1)
        self.assertGreater(len(self.vocabulary.encode("zyxw")), 2)

    def test_all_bytes_and_the_space_are_tokens(self):
        for value in range(256):
            self.assertIn(bytes([value]), self.vocabulary)
        self.assertEqual(self.vocabulary.spell(b" "), [32])

    def test_no_token_stands_twice(self):
        self.assertEqual(max(Counter(self.vocabulary.tokens).values()), 1)

    def test_the_longest_piece_wins(self):
        vocabulary = tokens.Vocabulary([bytes([i]) for i in range(256)] + [b" te", b" test"])
        self.assertEqual(vocabulary.spell(b" tests"), [257, ord("s")])

    def test_a_prompt_is_cut_at_letters_outside_ascii_and_still_comes_back(self):
        ids = self.vocabulary.encode_prompt(" Ås og blåbær")
        self.assertEqual(self.vocabulary.decode(ids), " Ås og blåbær")
        self.assertNotEqual(ids, self.vocabulary.encode("Ås og blåbær"))

    def test_the_trained_rows_are_all_different_and_hold_the_languages(self):
        rows = self.vocabulary.rows()
        self.assertEqual(len(rows), len(set(rows)))
        self.assertLess(len(self.vocabulary), tokens.EMPTY)
        for token in tokens.LANGUAGE_TOKENS.values():
            self.assertIn(token, rows)

    def test_pieces_are_learnt_from_what_is_common(self):
        pieces = tokens.learn_pieces(Counter({" skole": 5, " skog": 4, " ku": 1}), 3)
        self.assertIn(" sk", pieces)
        self.assertTrue(all(len(piece.strip()) <= 4 for piece in pieces))


class GrammarTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.grammars = {language: Grammar(language) for language in ("no", "en")}

    def sentences(self, language, held_out, count=400, seed=5):
        rng = random.Random(seed)
        return [self.grammars[language].sentence(rng, held_out) for _ in range(count)]

    def test_a_seed_always_gives_the_same_sentences(self):
        for language in self.grammars:
            self.assertEqual(self.sentences(language, False), self.sentences(language, False))
            self.assertNotEqual(self.sentences(language, False), self.sentences(language, False, seed=6))

    def test_no_sentence_is_both_trained_on_and_held_out(self):
        for language in self.grammars:
            trained = {sentence_key(first) for first, _ in self.sentences(language, False, 6000)}
            held = {sentence_key(first) for first, _ in self.sentences(language, True, 600)}
            self.assertEqual(trained & held, set())

    def test_about_a_twentieth_is_held_out(self):
        grammar = self.grammars["en"]
        texts = {f"The {a} {b} {c}." for a in "abcdefghij" for b in "klmnopqrst" for c in "uvwxyzabcd"}
        share = sum(grammar.is_held_out(text) for text in texts) / len(texts)
        self.assertTrue(0.03 < share < 0.07, share)

    def test_everyday_formulas_are_never_held_out(self):
        for language, grammar in self.grammars.items():
            for pattern, _ in grammar.patterns:
                if "{" not in pattern:
                    self.assertFalse(grammar.is_held_out(finished(pattern)), pattern)

    def test_every_slot_is_filled_and_every_sentence_ends(self):
        for language in self.grammars:
            for pair in self.sentences(language, False, 3000):
                for text in pair:
                    self.assertRegex(text, r"^[^{}|;\[\]]+[.?!]$")
                    self.assertNotRegex(text, r"[,.?!][,.?!]|  | [,.?!]")
                    self.assertTrue(text[0].isupper() or text[0].isdigit(), text)

    def test_both_norwegian_forms_have_the_same_slots(self):
        slots = re.compile(r"\{(\w+)\}")
        for items in [*self.grammars["no"].slots.values(), self.grammars["no"].patterns]:
            for first, second in items:
                self.assertEqual(slots.findall(first), slots.findall(second))

    def test_english_stands_twice(self):
        self.assertTrue(all(first == second for first, second in self.sentences("en", False)))

    def test_a_pair_without_a_bar_is_the_same_in_both_forms(self):
        self.assertEqual(split_pair("hus"), ("hus", "hus"))
        self.assertEqual(split_pair("uke | veke"), ("uke", "veke"))


class InflectionTest(unittest.TestCase):
    def test_norwegian_nouns(self):
        slots = inflection.norwegian({"masculine": ["vei | veg; hage"], "feminine": ["uke | veke"],
                                      "neuter": ["hus; rom/romm; eple"], "verbs": [], "adjectives": [], "adverbs": []})
        self.assertEqual(slots["indefinite"][0], ("en vei", "ein veg"))
        self.assertEqual(slots["plural"][:3], [("veier", "vegar"), ("hager", "hagar"), ("uker", "veker")])
        self.assertEqual(slots["definite"][3:], [("huset", "huset"), ("rommet", "rommet"), ("eplet", "eplet")])
        self.assertEqual(slots["definites"][2:5], [("ukene", "vekene"), ("husene", "husa"), ("rommene", "romma")])
        self.assertEqual(slots["plural"][3:], [("hus", "hus"), ("rom", "rom"), ("epler", "eple")])

    def test_english_words(self):
        slots = inflection.english({"nouns": ["box; city; day; knife"], "regular verbs": ["stop; carry; close; play"],
                                    "irregular verbs": ["write wrote written"], "adjectives": [], "adverbs": []})
        self.assertEqual([word for word, _ in slots["nouns"]], ["boxes", "cities", "days", "knives"])
        self.assertEqual([word for word, _ in slots["past"]], ["stopped", "carried", "closed", "played", "wrote"])
        self.assertEqual([word for word, _ in slots["base_ing"]],
                         ["stopping", "carrying", "closing", "playing", "writing"])
        self.assertEqual(slots["perfect"][-1][0], "written")


class InventedWordTest(unittest.TestCase):
    def test_words_are_many_and_spelled_with_letters_only(self):
        rng = random.Random(1)
        for language in ("no", "en"):
            words = {invented_word(rng, language) for _ in range(500)}
            self.assertGreater(len(words), 400)
            self.assertTrue(all(re.fullmatch("[a-zæøå]{3,}", word) for word in words))


class ErrorRateTest(unittest.TestCase):
    def test_distance_counts_words_put_in_taken_out_and_replaced(self):
        self.assertEqual(distance("a b c".split(), "a b c".split()), 0)
        self.assertEqual(distance("a b c".split(), "a x c".split()), 1)
        self.assertEqual(distance("a b c".split(), "a c".split()), 1)
        self.assertEqual(distance("a b c".split(), "a b b c d".split()), 2)
        self.assertEqual(distance([], ["a"]), 1)
        self.assertEqual(distance(["a"], []), 1)

    def test_marks_and_case_do_not_count(self):
        self.assertEqual(normalised("Hei, Åse! Don't go."), ["hei", "åse", "don't", "go"])

    def test_the_rate_is_of_all_words_and_wrong_takes_are_kept(self):
        rate = ErrorRate()
        rate.add("En to tre fire.", " En to tre fire.")
        rate.add("Fem seks.", "Fem")
        self.assertAlmostEqual(rate.percent, 100 / 6)
        self.assertEqual((rate.exact, rate.takes, rate.wrong), (1, 2, [("Fem seks.", "Fem")]))


if __name__ == "__main__":
    unittest.main()
