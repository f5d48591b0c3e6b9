#!/usr/bin/python3
"""Finds what a program's windows show by its role and name, as a screen reader does, on the session bus.

accessible.py ROLE WORDS WINDOW [TEXT]: presses the control below the window (a dialog too) of that title,
once an entry there holds the text; the first three are regular expressions. Ends with 1 and a line if
there is none for a minute."""
import re
import sys
import time

import gi
gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib

Atspi.set_timeout(10000, 30000)

def walk(node):
    yield node
    for child in filter(None, map(node.get_child_at_index, range(node.get_child_count()))):
        yield from walk(child)

def text_of(node):
    return Atspi.Text.get_text(node, 0, -1) if "Text" in node.get_interfaces() else None

def find(role, words, below=None, state="visible", text=None):
    """The first node whose role and whose name and description match, in that state and with that text: waits."""
    wanted = getattr(Atspi.StateType, state.upper())
    end = time.time() + 60
    while time.time() < end:
        try:
            for node in walk(below or Atspi.get_desktop(0)):
                said = f"{node.get_name()}\n{node.get_description()}"
                if re.fullmatch(role, node.get_role_name()) and re.search(words, said) \
                        and text in (None, text_of(node)) and (state == "visible" or node.get_state_set().contains(wanted)):
                    return node
        except GLib.Error:
            pass  # a window has gone meanwhile
        time.sleep(0.1)
    sys.exit(f"No {role} <{words}> {state}")

def press(*wanted, **more):
    Atspi.Action.do_action(find(*wanted, **more), 0)

def main(role, words, title, text=None):
    window = find("frame|dialog|alert", f"^{title}\n", state="showing")
    if text:
        find("text", "", below=window, text=text)
    press(role, words, below=window)

if __name__ == "__main__":
    main(*sys.argv[1:])
