"""Faults on sway."""
import unittest

from wayland_faults import WaylandFaults


class SwayFaults(WaylandFaults):
    KIND = "sway"

    def bind(self, line):
        """Into the user's configuration, which is read again."""
        configuration = self.desktop.configuration
        before = configuration.read_text()
        configuration.write_text(before + line)
        self.desktop.run("swaymsg", "reload")
        return before

    def free(self, before):
        self.desktop.configuration.write_text(before)
        self.desktop.run("swaymsg", "reload")
        self.desktop.wait(lambda: "Alt+Space is registered" in self.doctor(), what="the hotkey")

    def test_the_hotkey_comes_back_after_a_reload(self):
        self.desktop.run("swaymsg", "reload")
        self.dictate_into(self.field())

    def test_the_users_own_binding_wins_and_is_named(self):
        self.addCleanup(self.free, self.bind("bindsym Mod1+space exec true\n"))
        self.desktop.wait(lambda: "Alt+Space does nothing" in self.doctor(), what="the doctor's word")
        self.assertIn("exec true", self.doctor())


del WaylandFaults

if __name__ == "__main__":
    unittest.main()
