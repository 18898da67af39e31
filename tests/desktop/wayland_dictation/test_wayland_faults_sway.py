"""Faults on sway."""
import json
import shutil
import unittest

from wayland_dictation import ALT, PROGRAM, SPACE
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
        mark = self.desktop.folder / "users-own"
        self.addCleanup(self.free, self.bind(f"bindsym Mod1+space exec touch {mark}\n"))
        self.desktop.wait(lambda: "Alt+Space does nothing" in self.doctor(), what="the doctor's word")
        self.assertIn("exec touch", self.doctor())
        self.desktop.key("alt+space")
        self.desktop.wait(mark.exists, what="what the user's own binding does")
        self.assertEqual(self.phase(), "idle")

    def test_a_locker_that_tells_nothing_is_noticed(self):
        if not shutil.which("swaylock"):
            self.skipTest("not installed: swaylock")
        field = self.field()
        self.desktop.down(ALT, SPACE)
        try:
            self.desktop.wait_for_phase("recording")
            locker = self.desktop.start("swaylock", "--color", "000000")
            self.addCleanup(locker.kill)
            self.desktop.wait(lambda: self.desktop.status()["locked"], what="the lock")
            self.desktop.wait(lambda: self.phase() != "recording", what="the end of the recording")
        finally:
            self.desktop.up(SPACE, ALT)
        locker.kill()
        self.desktop.wait(lambda: not self.desktop.status()["locked"], what="the end of the lock")
        self.desktop.wait_for_phase("idle")
        self.assertEqual(field.text(), "")
        self.dictate_into(field)

    def test_the_program_quits_while_its_key_is_held(self):
        """Sway would run what it has freed at the key's release, and end."""
        self.desktop.down(ALT, SPACE)
        try:
            self.desktop.wait_for_phase("recording")
            self.desktop.tulvane("quit")
            self.desktop.run("swaymsg", "-t", "get_tree")
        finally:
            self.desktop.up(SPACE, ALT)
        self.desktop.start_logged("tulvane", str(PROGRAM), "--background")
        self.desktop.wait(lambda: "Alt+Space is registered" in self.doctor(), what="the program")
        self.dictate_into(self.field())

    def screens(self):
        return {one["name"]: one["rect"] for one in json.loads(self.desktop.run("swaymsg", "-r", "-t", "get_outputs"))}

    def window(self, node=None):
        """The program's, where it is shown: its place."""
        node = node or json.loads(self.desktop.run("swaymsg", "-r", "-t", "get_tree"))
        if node.get("app_id") == "com.dunio.Tulvane":
            return node["rect"]
        return next((found for child in node["nodes"] + node["floating_nodes"] if (found := self.window(child))), None)

    def test_the_window_fits_the_smaller_of_two_screens(self):
        """Late by its name: the second screen stays."""
        before = self.screens()
        self.desktop.run("swaymsg", 'for_window [app_id="com.dunio.Tulvane"] floating enable')
        self.desktop.run("swaymsg", "create_output")
        name = self.desktop.wait(lambda: next(iter(set(self.screens()) - set(before)), None), what="the second screen")
        self.desktop.run("swaymsg", f"output {name} resolution 800x600")
        self.desktop.wait(lambda: self.screens()[name]["width"] == 800, what="its size")
        self.desktop.run("swaymsg", "focus", "output", name)
        try:
            self.desktop.start(str(PROGRAM))
            place = self.desktop.wait(self.window, what="the window")
            screen = self.screens()[name]
            self.assertGreaterEqual(place["x"], screen["x"])
            self.assertGreaterEqual(place["y"], screen["y"])
            self.assertLessEqual(place["x"] + place["width"], screen["x"] + screen["width"])
            self.assertLessEqual(place["y"] + place["height"], screen["y"] + screen["height"])
        finally:
            self.desktop.run("swaymsg", '[app_id="com.dunio.Tulvane"] kill')
            self.desktop.run("swaymsg", "focus", "output", next(iter(before)))

    def test_the_first_press_after_a_paste_counts(self):
        """The keyboards take turns then, and sway's layout with them."""
        for _ in range(2):
            self.dictate_into(self.field())
            self.desktop.wait_for_phase("idle")
            self.desktop.keyboard.key(ALT, True)
            self.desktop.keyboard.key(SPACE, True)
            try:
                self.desktop.wait_for_phase("recording")
            finally:
                self.desktop.keyboard.key(SPACE, False)
                self.desktop.keyboard.key(ALT, False)
            self.desktop.wait_for_phase("idle", "notice", "error")
            self.desktop.wait_for_phase("idle")


del WaylandFaults

if __name__ == "__main__":
    unittest.main()
