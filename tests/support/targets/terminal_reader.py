#!/usr/bin/env python3
"""Runs in a terminal and appends every byte that it gets from it to a file, which appears when it is ready.

    terminal_reader.py FILE
"""
import os
import sys
import tty


def main():
    # As it is typed: nothing edited, echoed or translated.
    tty.setraw(0)
    # A paste with no marks around it, so that the bytes are the text's alone.
    os.write(1, b"\x1b[?2004l")
    with open(sys.argv[1], "wb", buffering=0) as file:
        while data := os.read(0, 65536):
            file.write(data)


main()
