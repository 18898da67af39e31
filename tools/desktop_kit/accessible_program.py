"""A program's controls as a screen reader finds them, and worked by the mouse where they are."""
import os

from virtual_desktop import VirtualDesktop


class AccessibleProgram:
    """Connects to the accessibility bus of the desktop; only one desktop per process can be worked so."""

    def __init__(self, desktop, name="Tulvane"):
        self.desktop, self.name = desktop, name
        os.environ.update(desktop.environment)
        import gi
        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi
        self.atspi = Atspi
        Atspi.init()

    def _applications(self):
        root = self.atspi.get_desktop(0)
        found = [root.get_child_at_index(i) for i in range(root.get_child_count())]
        return [one for one in found if one and one.get_name() == self.name]

    def _walk(self, node):
        yield node
        for i in range(node.get_child_count()):
            child = node.get_child_at_index(i)
            if child:
                yield from self._walk(child)

    def _all(self):
        for application in self._applications():
            application.clear_cache()
            for index in range(application.get_child_count()):
                window = application.get_child_at_index(index)
                # A window that has been closed keeps its controls.
                if window and window.get_state_set().contains(self.atspi.StateType.SHOWING):
                    yield from self._walk(window)

    def find(self, role, name=None):
        """The control of this role ("check box") and name, waited for; without a name the first of the role."""
        def look():
            try:
                return next((one for one in self._all()
                             if one.get_role_name() == role and name in (None, one.get_name())), None)
            except Exception:  # what was being read has gone meanwhile
                return None
        return VirtualDesktop.wait(look, what=f"the {role} “{name}”")

    def has(self, role, name):
        try:
            return any(one.get_role_name() == role and one.get_name() == name for one in self._all())
        except Exception:
            return False

    def is_checked(self, role, name):
        return self.find(role, name).get_state_set().contains(self.atspi.StateType.CHECKED)

    def texts(self):
        return [one.get_name() for one in self._all() if one.get_role_name() in ("label", "heading")]

    def act(self, role, name, action):
        """Does one of the control's actions: "Press", "Toggle", "Increase"."""
        node = self.find(role, name)
        actions = node.get_action_iface()
        names = [actions.get_action_name(i) for i in range(actions.get_n_actions())]
        actions.do_action(names.index(action))

    def focus(self, role, name):
        self.find(role, name).get_component_iface().grab_focus()

    def description(self, role, name):
        return self.find(role, name).get_description()

    def value(self, role, name):
        return self.find(role, name).get_value_iface().get_current_value()

    def place(self, role, name):
        """On the screen: x, y, width, height."""
        shown = self.find(role, name).get_component_iface().get_extents(self.atspi.CoordType.SCREEN)
        return shown.x, shown.y, shown.width, shown.height

    def click(self, role, name):
        """With the mouse, once the control has come into view and stands still."""
        self.focus(role, name)
        seen = []

        def settled():
            seen.append(self.place(role, name))
            return len(seen) > 1 and seen[-1] == seen[-2]
        VirtualDesktop.wait(settled, what=f"the end of the {role} “{name}”'s way")
        x, y, width, height = seen[-1]
        self.desktop.xdotool("mousemove", str(x + width // 2), str(y + height // 2), "click", "1")

    def shows(self, text):
        """Waits until the text can be read somewhere."""
        def look():
            try:
                return text in self.texts()
            except Exception:  # what was being read has gone meanwhile
                return False
        return VirtualDesktop.wait(look, what=f"the text “{text}”")
