"""Faults on KDE's compositor."""
import unittest

from wayland_dictation import CONTROL, SENTENCE, SPACE
from wayland_faults import ALT, WaylandFaults

CONTROL_ALT_SPACE, ALT_SPACE = 0x0C000020, 0x08000020  # the toolkit's numbers


class KWinFaults(WaylandFaults):
    KIND = "kwin"

    def set_key(self, key):
        """As the system settings do it for the user."""
        self.desktop.call("org.kde.kglobalaccel", "/kglobalaccel", "org.kde.KGlobalAccel.setForeignShortcut",
                          "['com.dunio.Tulvane', 'hotkey-1', '', '']", f"[{key}]")

    def test_the_users_rebinding_is_followed(self):
        self.set_key(CONTROL_ALT_SPACE)
        self.addCleanup(self.set_key, ALT_SPACE)
        self.desktop.wait(lambda: "Ctrl+Alt+Space is registered" in self.doctor(), what="the new key")
        field = self.field()
        self.desktop.down(CONTROL, ALT, SPACE)
        try:
            self.desktop.wait_for_phase("recording")
            self.desktop.run("paplay", "--device=micsink", str(self.sound))
        finally:
            self.desktop.up(SPACE, ALT, CONTROL)
        self.desktop.wait(field.text, limit=60, what="the text")
        self.desktop.wait_for_phase("idle")
        self.assertEqual(field.text(), SENTENCE + " ")


del WaylandFaults

if __name__ == "__main__":
    unittest.main()
