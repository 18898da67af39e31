"""Dictations on KDE's compositor."""
import unittest

from wayland_dictation import WaylandDictation


class KWinDictation(WaylandDictation):
    KIND = "kwin"
    NO_TERMINAL = "foot opens no window on KWin without a screen"


del WaylandDictation

if __name__ == "__main__":
    unittest.main()
