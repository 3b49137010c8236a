#!/usr/bin/env python3
"""Prints the accessible name and text of the shown page, in two lines. The text is the visible part of the page's own tree
if the engine provides one, otherwise the description. Having both is an error."""

import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi


def children(parent):
    for index in range(parent.get_child_count()):
        child = parent.get_child_at_index(index)
        if child is not None:
            yield child


def below(parent, depth=0):
    for child in children(parent):
        yield child
        if depth < 20:
            yield from below(child, depth + 1)


def is_seen(block, page):
    """Excludes the columns of other pages, which are beside the page."""
    inner, outer = (each.get_extents(Atspi.CoordType.WINDOW) for each in (block, page))
    return inner.x < outer.x + outer.width and inner.x + inner.width > outer.x


def texts(document, page):
    for block in below(document):
        if block.get_role_name() in ("heading", "paragraph") and is_seen(block, page):
            yield Atspi.Text.get_text(block, 0, -1)


Atspi.init()
for page in below(Atspi.get_desktop(0)):
    if ", " not in (page.get_name() or "") or page.get_role_name() != "document text":
        continue
    description = (page.get_description() or "").replace("\n", " ")
    trees = [child for child in below(page) if child.get_role_name() == "document web"]
    if description and trees:
        sys.exit("the page is told twice")
    text = " ".join(piece for tree in trees for piece in texts(tree, page)) or description
    if text:
        print(page.get_role_name(), "|", page.get_name())
        print(text)
