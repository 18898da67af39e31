"""Dictations on KDE's compositor."""
import unittest

from wayland_dictation import GtkTerminal, WaylandDictation


class KWinDictation(WaylandDictation):
    KIND = "kwin"
    TERMINAL = GtkTerminal


del WaylandDictation

if __name__ == "__main__":
    unittest.main()
