"""The sound side of the demo model, and its file. Needs numpy and scipy; nothing is spoken or trained."""
import hashlib
import importlib.util
import lzma
import types
import unittest
from tempfile import TemporaryDirectory
from pathlib import Path

HAVE_NUMPY = all(importlib.util.find_spec(name) for name in ("numpy", "scipy"))
if HAVE_NUMPY:
    import numpy as np

    from speechmodel import audio, corpus, ggml_file, measurements, testsets, tokens, windows
    from speechmodel.grammar import sentence_key
    from speechmodel.voices import HELD_OUT_VARIANTS, TRAINING_VARIANTS

RESOURCES = Path(__file__).resolve().parents[2] / "resources" / "demo-model"


@unittest.skipUnless(HAVE_NUMPY, "numpy and scipy are not installed")
class PlanTest(unittest.TestCase):
    def sentence_keys(self, entries):
        for item in entries:
            text = next(iter(item["written"].values()))
            for sentence in text.replace("?", ".").replace("!", ".").split("."):
                if len(sentence.split()) >= 3:
                    yield sentence_key(sentence)

    def test_a_seed_always_gives_the_same_plan(self):
        self.assertEqual(corpus.plan(50, 3, TRAINING_VARIANTS), corpus.plan(50, 3, TRAINING_VARIANTS))

    def test_no_held_out_voice_is_in_training(self):
        spoken = {item["voice"][1] for item in corpus.plan(2000, 4, TRAINING_VARIANTS)}
        self.assertEqual(spoken & set(HELD_OUT_VARIANTS), set())
        self.assertEqual(set(HELD_OUT_VARIANTS), {"m8", "f5", "Annie", "Marco", "john", "belinda"})
        self.assertEqual(set(TRAINING_VARIANTS) & set(HELD_OUT_VARIANTS), set())

    def test_no_test_sentence_is_in_training(self):
        trained = corpus.plan(4000, 20261, TRAINING_VARIANTS)
        tested = corpus.plan(360, 777, TRAINING_VARIANTS, held_out=True)
        self.assertEqual(set(self.sentence_keys(trained)) & set(self.sentence_keys(tested)), set())

    def test_the_sentences_written_by_hand_are_left_out(self):
        excluded = corpus.excluded_texts()
        self.assertIn("Dette programmet skriver det jeg sier.", excluded)
        for item in corpus.plan(4000, 20261, TRAINING_VARIANTS):
            self.assertFalse(excluded.intersection(item["written"].values()))


    def test_the_earlier_sentences_are_kept_from_training_too(self):
        earlier = {text for _, texts in testsets.earlier_sentences() for text in texts}
        self.assertEqual(len(testsets.earlier_sentences()), 800)
        self.assertLessEqual(earlier, corpus.excluded_texts())


@unittest.skipUnless(HAVE_NUMPY, "numpy and scipy are not installed")
class WindowTest(unittest.TestCase):
    def test_words_get_their_start_and_joined_words_none(self):
        text = "Hei, dette er 25."
        self.assertEqual(corpus.word_starts(text, [(0, 10), (5, 20), (14, 40), (14, 50)]), [10, 20, -1, 40])

    def test_a_word_belongs_to_the_window_that_holds_its_middle(self):
        words = [("en", 100), ("to", 200), ("tre", 300), ("fire", 400)]
        sound = np.zeros(500, np.float32)
        first = windows.cut(sound, words, "no", 0, 250)
        second = windows.cut(sound, words, "no", 250, 500)
        self.assertEqual((first.text, first.history), ("en to", ""))
        self.assertEqual((second.text, second.history), ("tre fire", "en to"))
        self.assertEqual(len(first.samples), 250)

    def test_stretching_changes_the_length(self):
        self.assertEqual(len(audio.stretched(np.zeros(1000, np.float32), 1.25)), 800)


@unittest.skipUnless(HAVE_NUMPY, "numpy and scipy are not installed")
class MeasurementTest(unittest.TestCase):
    def test_the_written_form_follows_the_language(self):
        item = dict(kind="no", spoken="Hva?", written={"no": "Hva?", "nn": "Kva?"})
        self.assertEqual(measurements.expected(item, "nn"), "Kva?")
        self.assertEqual(measurements.expected(item, "en"), "Hva?")

    def test_markers_are_counted_where_they_are_lost(self):
        answer = types.SimpleNamespace(text="Her kommer melk, og fisk.")
        item = dict(markers=[("melk", 2.0), ("ost", 29.8), ("fisk", 31.0)])
        total, lost, edge, edge_lost, missing = measurements._marker_counts([(item, answer)])
        self.assertEqual((total, lost, edge, edge_lost, missing), (3, 1, 1, 1, ["ost 29.8"]))

    def test_noise_is_as_far_below_the_speech_as_asked(self):
        sound = (np.sin(np.arange(32000) / 5) * 5000).astype(np.int16)
        rest = testsets.with_noise(sound, 20, 1) - sound
        ratio = 20 * np.log10(np.sqrt((sound.astype(float) ** 2).mean() / (rest**2).mean()))
        self.assertAlmostEqual(ratio, 20, delta=0.2)


@unittest.skipUnless(HAVE_NUMPY, "numpy and scipy are not installed")
class SoundTest(unittest.TestCase):
    def test_mel_filters_cover_the_spectrum_with_equal_areas(self):
        filters = audio.mel_filters()
        self.assertEqual(filters.shape, (80, 201))
        self.assertTrue((filters >= 0).all())
        self.assertTrue((filters.sum(1) > 0).all())
        self.assertAlmostEqual(float(filters[40].sum()) * 40, 1.0, delta=0.2)

    def test_the_fourier_matrix_agrees_with_the_fast_transform(self):
        sound = np.random.default_rng(1).standard_normal(400)
        window = 0.5 * (1 - np.cos(2 * np.pi * np.arange(400) / 400))
        expected = np.fft.rfft(sound * window)
        parts = sound @ audio.fourier_matrix()
        np.testing.assert_allclose(parts[:201] + 1j * parts[201:], expected, atol=1e-3)

    def test_what_is_not_speech_stays_in_range(self):
        rng = np.random.default_rng(2)
        for _ in range(60):
            sound = audio.without_speech(rng, 2.0)
            self.assertTrue(np.isfinite(sound).all() and np.abs(sound).max() <= 1.0)
            self.assertLessEqual(len(sound), 32000)


@unittest.skipUnless(HAVE_NUMPY, "numpy and scipy are not installed")
class ModelFileTest(unittest.TestCase):
    SHAPE = dict(width=8, heads=2, encoder_layers=1, decoder_layers=1)

    def test_what_is_written_is_read_back(self):
        rng = np.random.default_rng(3)
        state = {"encoder.conv1.bias": rng.standard_normal(8), "decoder.ln.weight": np.full(8, 2.0),
                 "decoder.ln.bias": np.full(8, 2.0), "letters.weight": np.zeros((3, 8)),
                 "decoder.token_embedding.weight": rng.standard_normal((3, 8)).astype(np.float16)}
        rows = [0, 5, tokens.END]
        with TemporaryDirectory() as folder:
            path = Path(folder) / "model.bin"
            ggml_file.write(path, self.SHAPE, [b"a", b" b"], ggml_file.file_tensors(state, rows))
            numbers, names, tensors = ggml_file.read(path.read_bytes())
            with self.assertRaises(ValueError):
                ggml_file.read(path.read_bytes()[:-1])
        self.assertEqual(list(numbers), [51865, 1500, 8, 2, 1, 448, 8, 2, 1, 80, 1])
        self.assertEqual((len(names), names[:3]), (50257, [b"a", b" b", b""]))
        self.assertNotIn("letters.weight", tensors)
        self.assertEqual(tensors["encoder.conv1.bias"].shape, (8, 1))
        table = tensors["decoder.token_embedding.weight"]
        np.testing.assert_array_equal(table[rows], state["decoder.token_embedding.weight"])
        self.assertEqual(table[1].tolist(), [-30.0] + [0.0] * 7)
        self.assertEqual((tensors["decoder.ln.weight"][0], tensors["decoder.ln.bias"][0]), (0.0, 1.0))

    def test_the_shipped_file_is_the_one_that_was_measured(self):
        packed = RESOURCES / "ggml-demo.bin.xz"
        digests = dict(reversed(line.split()) for line in (RESOURCES / "SHA256SUMS").read_text().splitlines())
        self.assertEqual(hashlib.sha256(packed.read_bytes()).hexdigest(), digests["ggml-demo.bin.xz"])
        data = lzma.decompress(packed.read_bytes())
        self.assertEqual(hashlib.sha256(data).hexdigest(), digests["demo.bin"])
        self.assertEqual(data[:4], b"lmgg")


if __name__ == "__main__":
    unittest.main()
