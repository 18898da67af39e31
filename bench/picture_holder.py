"""A program that holds a picture on the clipboard, as an image editor or a screenshot program does.

    picture_holder.py qt5|qt6|gtk3|gtk4 WIDTH HEIGHT

It says "ready" once it has the clipboard, "kept" at each line of standard input with which it takes it anew.
"""
import os
import random
import sys


def pixels(width, height):
    """RGBA rows of what a photograph is to an encoder: noise that is coarse and neighbours that are alike."""
    noise = random.Random(width * height)
    row = bytearray()
    rows = []
    for y in range(height):
        if y % 3 == 0:
            row = bytearray()
            for _ in range(0, width, 3):
                row += bytes((noise.randrange(256), noise.randrange(256), noise.randrange(256), 255)) * 3
        rows.append(bytes(row[:width * 4]))
    return b"".join(rows)


def say(word):
    sys.stdout.write(word + "\n")
    sys.stdout.flush()


def hold_qt(widgets, gui, core, width, height):
    app = widgets.QApplication(sys.argv)
    form = getattr(gui.QImage, "Format", gui.QImage).Format_RGBA8888
    image = gui.QImage(pixels(width, height), width, height, width * 4, form).copy()
    where = getattr(core.QSocketNotifier, "Type", core.QSocketNotifier).Read
    notifier = core.QSocketNotifier(0, where)

    def keep(word):
        app.clipboard().setImage(image)
        say(word)

    notifier.activated.connect(lambda *_: keep("kept") if os.read(0, 100) else app.quit())
    core.QTimer.singleShot(0, lambda: keep("ready"))
    (app.exec if hasattr(app, "exec") else app.exec_)()


def hold_qt5(width, height):
    from PyQt5 import QtCore, QtGui, QtWidgets
    hold_qt(QtWidgets, QtGui, QtCore, width, height)


def hold_qt6(width, height):
    from PyQt6 import QtCore, QtGui, QtWidgets
    hold_qt(QtWidgets, QtGui, QtCore, width, height)


def hold_gtk(keep):
    import gi
    gi.require_version("GLib", "2.0")
    from gi.repository import GLib
    loop = GLib.MainLoop()

    def again(*_):
        if not os.read(0, 100):
            loop.quit()
            return False
        keep()
        say("kept")
        return True

    GLib.unix_fd_add_full(GLib.PRIORITY_DEFAULT, 0, GLib.IOCondition.IN | GLib.IOCondition.HUP, again)
    keep()
    say("ready")
    loop.run()


def hold_gtk3(width, height):
    import gi
    gi.require_version("Gdk", "3.0")
    gi.require_version("GdkPixbuf", "2.0")
    gi.require_version("Gtk", "3.0")
    from gi.repository import Gdk, GdkPixbuf, GLib, Gtk
    clipboard = Gtk.Clipboard.get(Gdk.SELECTION_CLIPBOARD)
    data = GLib.Bytes.new(pixels(width, height))
    image = GdkPixbuf.Pixbuf.new_from_bytes(data, GdkPixbuf.Colorspace.RGB, True, 8, width, height, width * 4)
    hold_gtk(lambda: clipboard.set_image(image))


def hold_gtk4(width, height):
    import gi
    gi.require_version("Gdk", "4.0")
    gi.require_version("Gtk", "4.0")
    from gi.repository import Gdk, GLib, GObject, Gtk
    Gtk.init()
    data = GLib.Bytes.new(pixels(width, height))
    image = Gdk.MemoryTexture.new(width, height, Gdk.MemoryFormat.R8G8B8A8, data, width * 4)
    # Encoders are known for the class itself, and not for those that stand on it.
    offer = Gdk.ContentProvider.new_for_value(GObject.Value(Gdk.Texture, image))
    hold_gtk(lambda: Gdk.Display.get_default().get_clipboard().set_content(offer))


def main():
    hold = {"qt5": hold_qt5, "qt6": hold_qt6, "gtk3": hold_gtk3, "gtk4": hold_gtk4}[sys.argv[1]]
    hold(int(sys.argv[2]), int(sys.argv[3]))


main()
