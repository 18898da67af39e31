"""The program's icon in an X11 tray, and its menu, by the mouse."""
from virtual_desktop import VirtualDesktop

HEIGHT = 28


def start_bar(desktop):
    """A light bar over the whole upper edge of the screen, with the tray at its right end."""
    desktop.start("trayer", "--edge", "top", "--align", "right", "--widthtype", "percent", "--width", "100",
                  "--height", str(HEIGHT), "--SetPartialStrut", "true", "--transparent", "true", "--alpha", "0",
                  "--tint", "0xe9edf2", "--padding", "6")
    desktop.wait(lambda: desktop.ask("xdotool", "search", "--onlyvisible", "--class", "trayer"), what="the bar")


class DockedIcon:
    def __init__(self, desktop):
        self.desktop = desktop

    def _places(self):
        """Where the program's mapped windows are, those that its user would not call windows as well: x, y, width,
        height."""
        lines = self.desktop.ask("xdotool", "search", "--onlyvisible", "--class", "tulvane",
                                 "getwindowgeometry", "--shell", "%@").splitlines()
        values, found = {}, []
        for line in lines:
            name, _, value = line.partition("=")
            values[name] = int(value)
            if name == "SCREEN":
                found.append((values["X"], values["Y"], values["WIDTH"], values["HEIGHT"]))
        return found

    def _icon(self):
        return next((place for place in self._places() if place[1] < HEIGHT and place[3] <= HEIGHT), None)

    def _menu(self):
        """It hangs from the bar; no window begins there."""
        return next((place for place in self._places() if place[1] <= HEIGHT + 1 and place[3] > 100), None)

    def open_menu(self):
        x, y, width, height = VirtualDesktop.wait(self._icon, what="the icon in the tray")
        self.desktop.run("xdotool", "mousemove", str(x + width // 2), str(y + height // 2), "click", "1")
        VirtualDesktop.wait(self._menu, what="the icon's menu")

    def choose(self, *keys):
        """A line of the open menu, by the keys that lead to it."""
        self.desktop.run("xdotool", "key", "--delay", "60", *keys, "Return")
        VirtualDesktop.wait(lambda: not self._menu(), what="the end of the menu")
