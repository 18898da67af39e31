"""Dictations on sway."""
import unittest

from wayland_dictation import WaylandDictation


class SwayDictation(WaylandDictation):
    KIND = "sway"


del WaylandDictation

if __name__ == "__main__":
    unittest.main()
