#!/usr/bin/env python3
"""Walks the accessible tree of the program. Prints the controls without a name, and those named like a class, one per line:
accessible-names.py FILE. Writes the whole tree with roles, names and states to the file."""

import re
import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi

# Roles that need a name.
CONTROLS = {
    "push button", "button", "toggle button", "check box", "radio button", "combo box", "entry", "text", "password text",
    "slider", "spin button", "progress bar", "switch", "link", "menu item", "check menu item", "radio menu item",
    "page tab", "list", "list item", "list box", "table", "table cell", "tree table", "tree item", "column header",
    "icon", "image", "alert", "dialog", "frame", "window", "document text", "document frame", "document web",
    "tool bar", "menu",
}
# Roles whose children need no names.
LEAVES = {"label", "image", "separator", "scroll bar", "slider", "menu item"}
# The toolkit's default names. The window of its tooltips does not belong to the program.
TYPE_NAME = re.compile(r"(?!GtkTooltipWindow)(gtkmm__)?(Gtk|Pagora|WebKit|CustomObject)[A-Z_]\w*|_\d+")
tree = open(sys.argv[1], "w", encoding="utf-8")


def walk(parent, trail):
    for index in range(parent.get_child_count()):
        child = parent.get_child_at_index(index)
        if child is None:
            continue
        role, name = child.get_role_name(), (child.get_name() or "").strip()
        # Each query is a round trip to the program, so states are only read for controls.
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
