#!/usr/bin/python3
"""Tells what the menus of a program show, as the accessibility bus has it.

Usage: accessible_menus.py SOCKET
Listens on the socket for one client. Each request is a line of JSON, and so is each answer:
  {"ask": "read", "process": 123, "title": "notes"}   the menu items of that window
  {"ask": "again", "keys": "<Primary>s"}              those with these keys, as they are now
"""
import json
import os
import socket
import sys

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

ACCESSIBLE = "org.a11y.atspi.Accessible"
TIMEOUT = 5000  # milliseconds

# Numbers of the roles and states, from the interface's description.
FRAME, WINDOW, DIALOG, FILE_CHOOSER = 23, 69, 16, 19
WINDOWS = {FRAME, WINDOW, DIALOG, FILE_CHOOSER}
MENUS = {33, 34, 41}
ITEMS = {8, 35, 45, 59}
ACTIVE, ENABLED, SENSITIVE = 1, 8, 24
# What never has the menu bar below it, and may have thousands of other things there: canvas, icon, list, status bar,
# table, terminal, text, tree, tree table, documents.
CONTENTS = {6, 26, 31, 54, 55, 60, 61, 65, 66, 82, 92, 93, 94, 95}
DEEPEST = 14
MOST_ITEMS = 4000
MOST_CHILDREN = 500


class Bus:
    def __init__(self):
        session = Gio.bus_get_sync(Gio.BusType.SESSION)
        address = session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None, 0, TIMEOUT)
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self.connection = Gio.DBusConnection.new_for_address_sync(address.unpack()[0], flags)

    def call(self, name, path, interface, member, arguments=None):
        return self.connection.call_sync(name, path, interface, member, arguments, None, 0, TIMEOUT).unpack()

    def process_of(self, name):
        arguments = GLib.Variant("(s)", (name,))
        return self.call("org.freedesktop.DBus", "/", "org.freedesktop.DBus", "GetConnectionUnixProcessID", arguments)[0]


class Accessible:
    def __init__(self, bus, name, path):
        self.bus, self.name, self.path = bus, name, path
        self.copied = False

    def ask(self, member, interface=ACCESSIBLE, arguments=None):
        return self.bus.call(self.name, self.path, interface, member, arguments)[0]

    def children(self):
        try:
            found = self.ask("GetChildren")[:MOST_CHILDREN]
        except GLib.Error:
            return []
        return [Accessible(self.bus, name, path) for name, path in found if not path.endswith("/null")]

    def role(self):
        return self.ask("GetRole")

    def title(self):
        arguments = GLib.Variant("(ss)", (ACCESSIBLE, "Name"))
        return (self.ask("Get", "org.freedesktop.DBus.Properties", arguments) or "").strip()

    def has(self, *states):
        words = self.ask("GetState")
        return all(words[state // 32] >> (state % 32) & 1 for state in states)

    def keys(self):
        """The last field of the key binding, which is the accelerator."""
        try:
            binding = self.ask("GetKeyBinding", "org.a11y.atspi.Action", GLib.Variant("(i)", (0,)))
        except GLib.Error:
            return ""
        self.copied = False
        fields = binding.split(";", 2)
        if len(fields) < 3:
            return ""
        # An office suite has its menus twice. The second copy writes paths of mnemonics without separators, and the
        # mnemonic where it has no name for the keys; but its titles and states are those of now.
        path = fields[1].rsplit(">", 1)[-1]
        self.copied = len(path) > 1 and ":" not in path
        key = fields[2].rsplit(">", 1)[-1].lower()
        return "" if self.copied and key == fields[0].lower() else fields[2]

    def describe(self, menu):
        keys = self.keys()
        return {"title": self.title(), "keys": keys, "enabled": self.has(SENSITIVE, ENABLED), "menu": menu,
                "copied": self.copied}


def canonical(keys):
    """The same for "<Primary><Shift>s" and "<Shift><Control>s"."""
    *held, key = keys.lower().replace("primary", "control").replace("ctrl", "control").replace(">", "<").split("<")
    return (frozenset(filter(None, held)), key)


class Reader:
    def __init__(self):
        self.bus = Bus()
        self.known = []  # (item, what it was when it was read last)

    def window(self, process, title):
        registry = Accessible(self.bus, "org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")
        for application in registry.children():
            try:
                if self.bus.process_of(application.name) != process:
                    continue
                windows = [window for window in application.children() if window.role() in WINDOWS]
                for choice in ([w for w in windows if w.title() == title.strip()], [w for w in windows if w.has(ACTIVE)],
                               windows):
                    if choice:
                        return choice[0]
            except GLib.Error:
                continue
        return None

    def collect(self, accessible, menu, depth, inside, found):
        if depth > DEEPEST or len(found) >= MOST_ITEMS:
            return
        for child in accessible.children():
            try:
                role = child.role()
                if inside and role in ITEMS:
                    found.append((child, menu))
                elif role in MENUS:
                    self.collect(child, menu or child.title(), depth + 1, True, found)
                elif inside or role not in CONTENTS:
                    self.collect(child, menu, depth + 1, inside, found)
            except GLib.Error:
                continue

    def read(self, process, title):
        self.known = []
        window = self.window(process, title)
        if window is None:
            return {"found": False, "items": []}
        found = []
        self.collect(window, "", 0, False, found)
        for item, menu in found:
            try:
                self.known.append((item, item.describe(menu)))
            except GLib.Error:
                continue
        return {"found": True, "items": [entry for _, entry in self.known if not entry["copied"]]}

    def again(self, keys):
        wanted = canonical(keys)
        entries = [self.now(item, last, keys) for item, last in self.known if canonical(last["keys"]) == wanted]
        entries = [entry for entry in entries if entry]
        copies = [entry for entry in entries if entry["copied"]]
        return {"found": True, "items": copies or [self.with_state_of_copy(entry) for entry in entries]}

    @staticmethod
    def now(item, last, keys):
        try:
            entry = item.describe(last["menu"])
        except GLib.Error:
            return None
        entry["keys"] = keys  # an insensitive item does not tell its keys
        entry["copied"] = last["copied"]
        return entry

    def with_state_of_copy(self, entry):
        for item, last in self.known:
            if last["copied"] and (last["title"], last["menu"]) == (entry["title"], entry["menu"]):
                copy = self.now(item, last, entry["keys"])
                return copy or entry
        return entry


def main():
    path = sys.argv[1]
    reader = Reader()
    listener = socket.socket(socket.AF_UNIX)
    listener.bind(path + ".new")
    listener.listen(1)
    os.rename(path + ".new", path)
    client, _ = listener.accept()
    stream = client.makefile("rwb")
    for line in stream:
        request = json.loads(line)
        try:
            if request["ask"] == "read":
                answer = reader.read(request["process"], request["title"])
            else:
                answer = reader.again(request["keys"])
        except GLib.Error as error:
            answer = {"found": False, "items": [], "error": str(error)}
        stream.write(json.dumps(answer).encode() + b"\n")
        stream.flush()


if __name__ == "__main__":
    main()
