#!/usr/bin/python3
"""Looks at the windows as a screen reader does, and waits for what is asked for.

    focus_control.py NAME          gives the focus to the control of that name, and prints the control's value
    focus_control.py --see NAME    waits until something of that name is shown
"""
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402


def everything(node, depth=0):
    if node is None or depth > 40:
        return
    yield node
    for index in range(node.get_child_count()):
        yield from everything(node.get_child_at_index(index), depth + 1)


def has(node, state):
    return node.get_state_set().contains(state)


def takes_focus(node):
    # A label beside the control has the same name, and claims to take the focus, too.
    if node.get_role() == Atspi.Role.LABEL or not has(node, Atspi.StateType.FOCUSABLE):
        return False
    node.grab_focus()
    return has(node, Atspi.StateType.FOCUSED)


def look(name, wanted):
    for node in everything(Atspi.get_desktop(0)):
        if node.get_name() == name and wanted(node):
            print(node.get_description())
            sys.exit(0)


end = time.monotonic() + 20
while time.monotonic() < end:
    if sys.argv[1] == "--see":
        look(sys.argv[2], lambda node: has(node, Atspi.StateType.SHOWING))
    else:
        look(sys.argv[1], takes_focus)
    time.sleep(0.1)
sys.exit("there is nothing of that name")
