#!/usr/bin/python3
"""A notification service for tests, in the place of a desktop's: tells on standard output, one JSON a
line, what it was asked to show, and does to it what the first argument says: "expire", "dismiss",
"click" or "keep". Runs with Debian's python3, which has python3-dbus and python3-gi."""

import json
import sys

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

NAME = "org.freedesktop.Notifications"


class Notifier(dbus.service.Object):
    @dbus.service.method(NAME, in_signature="", out_signature="as")
    def GetCapabilities(self):
        return ["body", "body-markup", "actions"]

    @dbus.service.method(NAME, in_signature="susssasa{sv}i", out_signature="u")
    def Notify(self, app, replaces, icon, summary, body, actions, hints, timeout):
        width, height, _, alpha, bits, channels, pixels = hints["image-data"]
        print(json.dumps({"app": app, "summary": summary, "body": body, "actions": actions, "timeout": timeout,
                          "image": [width, height, bool(alpha), bits, channels, len(pixels)]}), flush=True)
        GLib.timeout_add(100, self.act, 7)
        return 7

    @dbus.service.signal(NAME, signature="uu")
    def NotificationClosed(self, number, reason):
        pass

    @dbus.service.signal(NAME, signature="us")
    def ActionInvoked(self, number, action):
        pass

    def act(self, number):
        what = sys.argv[1]
        self.NotificationClosed(number + 1, 1)  # another's
        if what == "click":
            self.ActionInvoked(number, "default")
        elif what != "keep":
            self.NotificationClosed(number, {"expire": 1, "dismiss": 2}[what])


dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
bus = dbus.SessionBus()
name = dbus.service.BusName(NAME, bus)
notifier = Notifier(bus, "/org/freedesktop/Notifications")
print("{}", flush=True)
GLib.MainLoop().run()
