"""The setup guide that a new user meets, gone through by the mouse."""
import time

from virtual_desktop import VirtualDesktop

ENGLISH = {"title": "Set up Tulvane", "download": "Download", "hotkey": "Hotkey", "hold": "Hold to talk", "close": "Close",
           "done": "Done", "completed": "4/4 completed"}
NORWEGIAN = {"title": "Sett opp Tulvane", "download": "Last ned", "hotkey": "Hurtigtast", "hold": "Hold inne for å snakke",
             "close": "Lukk", "done": "Ferdig", "completed": "4 av 4 fullført"}


class SetupGuide:
    """`page`: the program's AccessibleProgram."""

    def __init__(self, desktop, page, words=ENGLISH):
        self.desktop, self.page, self.words = desktop, page, words
        self.window = desktop.wait(lambda: desktop.windows(words["title"]), what="the setup guide")[0]
        page.find("push button", words["close"])

    def wait_until_complete(self):
        self.page.find("push button", self.words["done"])
        VirtualDesktop.wait(lambda: self.words["completed"] in self.page.texts(), what="the last mark")

    def scroll_to(self, role, name):
        """By the wheel, until the control stands clear of the bar at the window's lower edge."""
        x, y, width, _ = self.page.place("push button", self.words["done"])
        self.desktop.run("xdotool", "mousemove", str(x + width // 2), str(y - 200))

        def is_shown():
            _, top, _, height = self.page.place(role, name)
            if top + height < y - 40:
                return True
            self.desktop.run("xdotool", "click", "5")
            return False

        def is_at_rest():
            before = self.page.place(role, name)
            time.sleep(0.1)
            return self.page.place(role, name) == before
        VirtualDesktop.wait(is_shown, what=f"the {role} “{name}” in view", pause=0.1)
        VirtualDesktop.wait(is_at_rest, what="the end of the scrolling")

    def open_step(self, name):
        """A done step is a line, which opens it."""
        self.scroll_to("push button", name)
        self.page.click("push button", name)

    def choose_holding(self):
        self.open_step(self.words["hotkey"])
        self.page.find("radio button", self.words["hold"])
        self.scroll_to("radio button", self.words["hold"])
        self.page.click("radio button", self.words["hold"])
        self.desktop.wait(lambda: self.desktop.stored("hotkeyMode") == "hold", what="the mode")
        self.desktop.wait(lambda: self.page.is_checked("radio button", self.words["hold"]), what="the choice’s mark")

    def finish(self):
        self.page.click("push button", self.words["done"])
        self.desktop.wait(lambda: self.desktop.stored("hasCompletedOnboarding") is True, what="the end of the setup")
        self.desktop.wait(lambda: not self.desktop.windows(self.words["title"]), what="the guide’s closing")
