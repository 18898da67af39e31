#!/usr/bin/python3
"""Reads the first text field of a program for a caller of another user, who may not speak with every program itself.

    accessible_reader.py NAME       once the field has the focus, and at each line of input, a line of JSON: its text
"""
import json
import os
import sys

from accessible_program import AccessibleProgram
from virtual_desktop import VirtualDesktop


class OwnDesktop:
    environment = dict(os.environ)


program = AccessibleProgram(OwnDesktop, sys.argv[1])
area = program.find("text")
VirtualDesktop.wait(lambda: area.get_state_set().contains(program.atspi.StateType.FOCUSED), what="the cursor in the field")
while True:
    area.clear_cache()
    print(json.dumps(program.atspi.Text.get_text(area, 0, -1)), flush=True)
    if not sys.stdin.readline():
        break
