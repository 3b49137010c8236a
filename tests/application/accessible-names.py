#!/usr/bin/env python3
"""Walks everything that assistive technology sees of the program and says which controls have no name and what is called by
the name of a class, one a line: accessible-names.py FILE. The whole tree, each with its role, name and states, is written to
the file."""

import re
import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi

# What a person acts on, or is taken to by name.
CONTROLS = {
    "push button", "toggle button", "check box", "radio button", "combo box", "entry", "text", "password text",
    "slider", "spin button", "progress bar", "switch", "link", "menu item", "check menu item", "radio menu item",
    "page tab", "list", "list item", "list box", "table", "table cell", "tree table", "tree item", "column header",
    "icon", "image", "alert", "dialog", "frame", "window", "document text", "document frame", "document web",
    "tool bar", "menu", "grouping",
}
# Nothing that a person acts on is within these.
LEAVES = {"label", "image", "separator", "scroll bar", "slider", "menu item"}
# What the toolkit calls a thing that nobody has named. It keeps the window of its tooltips to itself.
TYPE_NAME = re.compile(r"(?!GtkTooltipWindow)(gtkmm__)?(Gtk|Pagora|WebKit|CustomObject)[A-Z_]\w*|_\d+")
tree = open(sys.argv[1], "w", encoding="utf-8")


def walk(parent, trail):
    for index in range(parent.get_child_count()):
        child = parent.get_child_at_index(index)
        if child is None:
            continue
        role, name = child.get_role_name(), (child.get_name() or "").strip()
        # Each question is a message to the program and back: only controls are asked for their states.
        states = child.get_state_set().get_states() if role in CONTROLS else []
        tree.write("  " * len(trail) + f"{role} | {name} | {' '.join(state.value_nick for state in states)}\n")
        if (role in CONTROLS and not name) or TYPE_NAME.fullmatch(name):
            print(" > ".join(trail + [role]))
        if role not in LEAVES:
            walk(child, trail + [f"{role} “{name}”" if name else role])


Atspi.init()
desktop = Atspi.get_desktop(0)
for index in range(desktop.get_child_count()):
    program = desktop.get_child_at_index(index)
    if program is not None and "pagora" in (program.get_name() or "").lower():
        walk(program, [])
