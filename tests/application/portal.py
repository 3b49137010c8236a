#!/usr/bin/env python3
"""Stands in for the settings portal of a desktop: portal.py. The colour scheme is initially light; each line on the
standard input, "dark" or "light", sets it. Writes "ready" when programs can query it."""

import sys

from gi.repository import Gio, GLib

NAME, PATH = "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop"
GROUP, KEY = "org.freedesktop.appearance", "color-scheme"
SCHEMES = {"dark": 1, "light": 2}
INTERFACE = Gio.DBusNodeInfo.new_for_xml("""<node><interface name="org.freedesktop.portal.Settings">
    <method name="Read">
        <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/>
    </method>
    <method name="ReadAll"><arg type="as" direction="in"/><arg type="a{sa{sv}}" direction="out"/></method>
    <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
</interface></node>""").interfaces[0]
scheme = SCHEMES["light"]


def value():
    return GLib.Variant("u", scheme)


def answer(connection, sender, path, interface, method, parameters, invocation):
    if method == "ReadAll":
        invocation.return_value(GLib.Variant("(a{sa{sv}})", ({GROUP: {KEY: value()}},)))
    elif parameters.unpack() == (GROUP, KEY):
        invocation.return_value(GLib.Variant("(v)", (GLib.Variant("v", value()),)))
    else:
        invocation.return_dbus_error("org.freedesktop.portal.Error.NotFound", "There is no such setting")


def change(channel, condition):
    global scheme
    line = sys.stdin.readline()
    if not line:
        loop.quit()
        return False
    scheme = SCHEMES[line.strip()]
    bus.emit_signal(None, PATH, "org.freedesktop.portal.Settings", "SettingChanged",
                    GLib.Variant("(ssv)", (GROUP, KEY, value())))
    return True


bus = Gio.bus_get_sync(Gio.BusType.SESSION)
bus.register_object(PATH, INTERFACE, answer, None, None)
Gio.bus_own_name_on_connection(bus, NAME, Gio.BusNameOwnerFlags.NONE, lambda *_: print("ready", flush=True), None)
GLib.io_add_watch(0, GLib.PRIORITY_DEFAULT, GLib.IOCondition.IN | GLib.IOCondition.HUP, change)
loop = GLib.MainLoop()
loop.run()
