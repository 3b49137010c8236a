#!/usr/bin/env python3
"""Records the accessibility events of the program, one per line, without querying it first: announcements.py FILE. Ends
with the session bus."""

import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib

KINDS = {"object:children-changed:add": "added", "object:state-changed:focused": "focus",
         "object:property-change:accessible-name": "name",
         "object:property-change:accessible-description": "description"}
MAX_TRIES = 60
told = open(sys.argv[1], "w", encoding="utf-8", buffering=1)
waiting = []


def hear(event):
    kind = next(name for prefix, name in KINDS.items() if event.type.startswith(prefix))
    if kind != "focus" or event.detail1:
        waiting.append([kind, event.source, 0])


def tell():
    """Writes the events in order. A new widget is reported a moment before its name can be queried. One whose name cannot
    be queried for long was destroyed meanwhile."""
    while waiting:
        kind, source, tries = waiting[0]
        try:
            text = source.get_description() if kind == "description" else source.get_name()
            told.write(f"{kind} | {source.get_role_name()} | {' '.join((text or '').split())}\n")
        except GLib.Error:
            if tries < MAX_TRIES and kind != "added":
                waiting[0][2] += 1
                return True
        waiting.pop(0)
    return True


Atspi.init()
GLib.timeout_add(50, tell)
listener = Atspi.EventListener.new(hear)
for each in KINDS:
    listener.register(each)
told.write("listening\n")
Atspi.event_main()
