#!/usr/bin/env python3
"""Writes down what assistive technology is told of the program as it happens, one a line: announcements.py FILE. It ends
with the session's bus."""

import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi

KINDS = ["object:property-change:accessible-name", "object:property-change:accessible-description",
         "object:property-change:accessible-value", "object:state-changed:focused"]
told = open(sys.argv[1], "w", encoding="utf-8", buffering=1)


def hear(event):
    source = event.source
    try:
        kind = event.type.split(":")[2 if "property" in event.type else 2]
        text = source.get_description() if kind == "accessible-description" else source.get_name()
        told.write(f"{kind} | {source.get_role_name()} | {' '.join((text or '').split())}\n")
    except gi.repository.GLib.Error:
        # It is gone already.
        pass


Atspi.init()
listener = Atspi.EventListener.new(hear)
for each in KINDS:
    listener.register(each)
told.write("listening\n")
Atspi.event_main()
