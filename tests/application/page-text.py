#!/usr/bin/env python3
"""What assistive technology is told of the page that is shown: its name and its text, in two lines."""

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi


def found(parent, depth=0):
    for index in range(parent.get_child_count()):
        child = parent.get_child_at_index(index)
        if child is None:
            continue
        if child.get_description() and ", " in (child.get_name() or ""):
            yield child
        if depth < 20:
            yield from found(child, depth + 1)


Atspi.init()
for page in found(Atspi.get_desktop(0)):
    print(page.get_role_name(), "|", page.get_name())
    print(page.get_description().replace("\n", " "))
