#!/usr/bin/env python3
"""What the program uses of the system on a Mac: ledger.txt, one entry a line,

    OWNER class|symbol|selector NAME

where the owner is the framework or library that declares it; `Orvantile` for selectors of its own classes. Selectors
of frameworks have to be declared in the headers of that framework in `sdk`. The C++ library and the toolkit are not
listed.

Usage: ledger.py PROGRAM [OBJECT...]    compares the ledger with what the program and its object files refer to
       --by-name                        does not compare owners, and leaves out the C library and the runtime, which
                                        differ between SDKs"""
import argparse
import dataclasses
import pathlib
import re
import sys

import macho

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "oracle"))
import compare_objc  # noqa: E402

UNLISTED = re.compile(r"Qt\w+$|libc\+\+")  # libraries whose symbols are not listed
OTHER_SDKS = {"libSystem", "libobjc"}


@dataclasses.dataclass(frozen=True, order=True)
class Entry:
    owner: str
    kind: str
    name: str

    def __str__(self):
        return f"{self.owner} {self.kind} {self.name}"


def read():
    lines = (HERE / "ledger.txt").read_text(encoding="utf-8").splitlines()
    entries = [Entry(*line.split()) for line in lines if line.strip() and not line.startswith("#")]
    doubled = {str(entry) for entry in entries if entries.count(entry) > 1}
    if doubled:
        sys.exit(f"ledger.txt: more than once: {', '.join(sorted(doubled))}")
    return entries


def owner_of(library):
    return pathlib.PurePosixPath(library or "nobody").name.split(".")[0]


def symbol_entry(name, library):
    owner = owner_of(library)
    if UNLISTED.match(owner):
        return None
    found = re.match(r"_OBJC_(?:META)?CLASS_\$_(\w+)$", name)
    return Entry(owner, "class", found[1]) if found else Entry(owner, "symbol", name)


def declared_selectors():
    """Which frameworks declare a selector."""
    result = {}
    for framework in ("Foundation", "AppKit", "QuartzCore"):
        compare_objc.FOLDERS = (framework,)
        for _, _, methods in compare_objc.read_headers(HERE.parent / "sdk" / "include")[0]:
            for method in methods:
                result.setdefault(method[1:], set()).add(framework)
    return result


def selectors(images):
    found = set()
    for image in images:
        # The names of instance variables and the types of properties are in the same place.
        variables = {name.rpartition(".")[2] for name in image.defined if name.startswith("_OBJC_IVAR_$_")}
        found |= {name for name in macho.strings(image, "__objc_methname") - variables if re.match(r"\w+$|(\w+:)+$", name)}
    return found


def actual_entries(programs, objects, listed):
    entries = set()
    for image in programs:
        entries |= {entry for entry in (symbol_entry(*symbol) for symbol in image.undefined) if entry}
        strings = set().union(*(macho.strings(image, section) for section in image.sections if "cstring" in section))
        entries |= {entry for entry in listed if entry.owner == "Sparkle" and entry.kind == "class" and entry.name in strings}
    owners = {entry.name: entry.owner for entry in listed if entry.kind == "selector"}
    entries |= {Entry(owners.get(name, "nobody"), "selector", name) for name in selectors(objects or programs)}
    return entries


def by_name(entries):
    return {Entry("any", entry.kind, entry.name) for entry in entries if entry.owner not in OTHER_SDKS}


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("objects", type=pathlib.Path, nargs="*")
    parser.add_argument("--by-name", action="store_true")
    options = parser.parse_args()

    listed = set(read())
    objects = [image for path in options.objects for image in macho.read(path)]
    actual = actual_entries(macho.read(options.program), objects, listed)
    if not actual:
        sys.exit(f"{options.program} refers to nothing")
    declared = declared_selectors()
    wrong = [f"not declared by its framework: {entry}" for entry in sorted(listed)
             if entry.kind == "selector" and entry.owner not in ("Orvantile", "Sparkle")
             and entry.owner not in declared.get(entry.name, set())]
    wrong += [f"a framework declares it: {entry}" for entry in sorted(listed)
              if entry.kind == "selector" and entry.owner == "Orvantile" and entry.name in declared]
    if options.by_name:
        listed, actual = by_name(listed), by_name(actual)
    wrong += [f"not in the ledger: {entry}" for entry in sorted(actual - listed)]
    wrong += [f"in the ledger without need: {entry}" for entry in sorted(listed - actual)]
    print(f"{len(actual & listed)} entries agree")
    print("\n".join(wrong))
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
