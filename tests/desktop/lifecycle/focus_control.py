#!/usr/bin/python3
"""Gives the focus to the control of that accessible name, as a screen reader does. Prints its value once it has it.

    focus_control.py NAME
"""
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402


def controls(node, depth=0):
    if node is None or depth > 40:
        return
    yield node
    for index in range(node.get_child_count()):
        yield from controls(node.get_child_at_index(index), depth + 1)


end = time.monotonic() + 20
while time.monotonic() < end:
    for control in controls(Atspi.get_desktop(0)):
        # A label beside the control has the same name, and claims to take the focus, too.
        if control.get_role() == Atspi.Role.LABEL:
            continue
        if control.get_name() == sys.argv[1] and control.get_state_set().contains(Atspi.StateType.FOCUSABLE):
            control.grab_focus()
            if control.get_state_set().contains(Atspi.StateType.FOCUSED):
                print(control.get_description())
                sys.exit(0)
    time.sleep(0.1)
sys.exit("there is no such control")
