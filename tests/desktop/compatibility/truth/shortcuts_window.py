#!/usr/bin/python3
"""Prints what a program's window of keyboard shortcuts lists: JSON of titles and keys.

Usage: shortcuts_window.py FILE RESOURCE   (the resource in the file, a program or a library, that is the window)
"""
import json
import subprocess
import sys
import xml.etree.ElementTree as tree


def text_of(shortcut, name):
    for entry in shortcut.findall("property"):
        if entry.get("name") == name:
            return (entry.text or "").strip()
    return ""


def main():
    window = subprocess.run(["gresource", "extract", *sys.argv[1:3]], check=True, capture_output=True).stdout
    shortcuts = []
    for entry in tree.fromstring(window).iter("object"):
        keys = text_of(entry, "accelerator").split(" ")[0]
        if entry.get("class") == "GtkShortcutsShortcut" and keys and "..." not in keys and "&" not in keys:
            shortcuts.append({"title": text_of(entry, "title"), "keys": keys})
    print(json.dumps(shortcuts))


if __name__ == "__main__":
    main()
