"""How the virtual desktop looks: calm colours, flat title bars, one typeface."""
from docked_icon import start_bar
from virtual_desktop import VirtualDesktop

WINDOW_MANAGER = """
<theme><name>Calm</name><titleLayout>LC</titleLayout><keepBorder>yes</keepBorder>
  <font place="ActiveWindow"><name>Inter</name><size>10</size><weight>Bold</weight></font>
  <font place="InactiveWindow"><name>Inter</name><size>10</size></font></theme>
<placement><policy>Smart</policy><center>yes</center></placement>
<applications><application class="L3afpad">
  <position force="yes"><x>center</x><y>80</y></position></application></applications>"""

KEYS = '<keybind key="A-F4"><action name="Close"/></keybind>'

TITLE_BARS = """
border.width: 1
padding.width: 10
padding.height: 7
window.handle.width: 0
window.client.padding.width: 0
window.*.title.bg: flat solid
window.active.title.bg.color: #f3f5f8
window.inactive.title.bg.color: #e6eaef
window.*.label.bg: parentrelative
window.active.label.text.color: #1c2733
window.inactive.label.text.color: #6b7785
window.label.text.justify: center
window.active.border.color: #a9b4c0
window.inactive.border.color: #b9c2cc
window.active.title.separator.color: #d9dfe6
window.inactive.title.separator.color: #d9dfe6
window.*.button.*.bg: parentrelative
window.active.button.*.image.color: #4a5663
window.inactive.button.*.image.color: #8a95a1
"""

FONTS = """<?xml version="1.0"?><!DOCTYPE fontconfig SYSTEM "urn:fontconfig:fonts.dtd"><fontconfig>
<match target="pattern"><test name="family"><string>sans-serif</string></test>
<edit name="family" mode="prepend" binding="strong"><string>Inter</string></edit></match></fontconfig>"""


def write(file, text):
    file.parent.mkdir(parents=True, exist_ok=True)
    file.write_text(text)


def decent_desktop(folder, program):
    """A virtual desktop with a background, a tray and a compositor."""
    write(folder / "data/themes/Calm/openbox-3/themerc", TITLE_BARS)
    write(folder / "config/gtk-3.0/settings.ini", "[Settings]\ngtk-font-name=Inter 11\n")
    write(folder / "config/fontconfig/fonts.conf", FONTS)
    desktop = VirtualDesktop(folder, program, window_manager=WINDOW_MANAGER, keys=KEYS)
    try:
        desktop.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        desktop.run("hsetroot", "-add", "#4d7288", "-add", "#22323f", "-gradient", "180")
        desktop.start("picom", "--backend", "xrender", "--config", "/dev/null")
        start_bar(desktop)
    except BaseException:
        desktop.end()
        raise
    return desktop
