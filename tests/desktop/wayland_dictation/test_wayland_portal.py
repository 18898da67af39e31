"""Dictations where keys are pressed by the desktop's portal alone, over the real one and KDE's part of it.

KDE's part asks a program without an application id nothing, so every question here is answered with yes; the other
answers are the unit tests'."""
import json
import os
import signal
import unittest

from accessible_program import AccessibleProgram
from wayland_dictation import CONTROL, PROGRAM, SENTENCE, TARGETS, Field, WaylandDictation

BUTTON = "Let Tulvane press keys…"
NOT_ALLOWED = "This desktop lets Tulvane press keys only once you have allowed it in a dialog of its own."
ASKED = "This desktop asks you in a dialog of its own whether Tulvane may press keys"
ENDED = "The desktop no longer lets Tulvane press keys: its remote control was ended."
CLOSE = (CONTROL, 17)  # Ctrl+W


class PortalDictation(WaylandDictation):
    KIND = "kwin-closed"
    # What the other desktops show.
    test_into_gtk4 = test_into_a_terminal = test_a_picture_on_the_clipboard_is_there_again = None
    test_the_indicator_is_seen_and_takes_no_focus = None

    def setUp(self):
        if not self.desktop.stored("remoteDesktopAllowed"):
            self.restart(allowed=True)

    def restart(self, allowed):
        self.desktop.run(str(PROGRAM), "quit")
        self.desktop.wait(lambda: not self.desktop.ask(str(PROGRAM), "status"), what="the program's end")
        file = self.desktop.folder / "config/com.dunio.Tulvane.json"
        settings = json.loads(file.read_text())
        settings["remoteDesktopAllowed"] = allowed
        file.write_text(json.dumps(settings))
        self.desktop.own()
        self.start()

    def start(self):
        self.desktop.start_logged("tulvane", str(PROGRAM), "--background")
        self.desktop.wait(lambda: self.desktop.ask(str(PROGRAM), "status"), what="the program")

    def field(self):
        return Field(self.desktop, "/usr/bin/python3", str(TARGETS / "gtk_target.py"), "view")

    def settings(self, reason):
        """The settings page as a screen reader finds it, once it says why no key is pressed."""
        self.desktop.run(str(PROGRAM), "--page", "settings")
        page = AccessibleProgram(self.desktop)
        page.find("push button", BUTTON)
        self.desktop.wait(lambda: any(reason in text for text in page.texts()), what=reason)
        return page

    def allow(self, page):
        page.act("push button", BUTTON, "Press")
        self.desktop.wait(lambda: not page.has("push button", BUTTON), what="the page's word that it is allowed")
        self.desktop.press(*CLOSE)

    def expect_on_clipboard(self):
        self.copy(b"before", "text/plain;charset=utf-8")
        self.hold()
        self.desktop.wait(lambda: self.paste().decode().strip() == SENTENCE, what="the text on the clipboard")
        self.desktop.wait_for_phase("idle")

    def end_portal(self):
        for process in self.desktop.processes("xdg-desktop-portal"):
            os.kill(process, signal.SIGKILL)

    def test_doctor_finds_nothing_to_do(self):
        """It does not know what the running program was allowed."""
        self.assertIn(NOT_ALLOWED, self.desktop.ask(str(PROGRAM), "doctor"))

    def test_from_the_question_to_the_end_of_the_permission(self):
        self.restart(allowed=False)
        self.expect_on_clipboard()
        self.allow(self.settings(ASKED))
        self.dictate_into(self.field())
        self.end_portal()
        self.expect_on_clipboard()
        self.allow(self.settings(ENDED))
        self.dictate_into(self.field())
        self.restart(allowed=True)
        self.dictate_into(self.field())

    def test_a_modifier_that_is_held_does_no_harm(self):
        field = self.field()
        self.addCleanup(field.end)
        self.hold()
        self.desktop.down(CONTROL)
        self.addCleanup(self.desktop.up, CONTROL)
        self.desktop.wait(lambda: field.text() or self.phase() in ("notice", "error"), limit=60, what="the text")
        self.desktop.wait_for_phase("idle", "notice", "error")
        self.assertEqual(field.text(), SENTENCE + " ", self.said())


del WaylandDictation

if __name__ == "__main__":
    unittest.main()
