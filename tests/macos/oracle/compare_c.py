#!/usr/bin/env python3
"""Compares the declarations of C interfaces in tests/macos/sdk with an independent translation of the same
interfaces to Pascal, which Debian ships as source (package fpc-source-3.2.2). What the translation does not know or
says otherwise has to be on the reviewed list beside this file; entries of the list that are not needed are errors.

Usage: compare_c.py HEADERS ALLOWED [PASCAL]      exits with 77, and says why, when there is no translation"""
import pathlib
import re
import sys

TRANSLATION = pathlib.Path("/usr/share/fpcsrc/3.2.2/packages/univint/src")
HEADERS = ("CoreFoundation/CoreFoundation.h", "ApplicationServices/ApplicationServices.h")
FILES = ("AX", "CF", "MacTypes")  # of the translation
SKIPPED = 77

# Types that have another name in the translation.
PASCAL = {
    "void": "", "void*": "univptr", "const void*": "univptr", "const void**": "univptrptr",
    "const unichar*": "unicharptr", "unichar*": "unicharptr", "unsigned long": "unsignedlong", "long": "signedlong",
    "int32_t": "longint", "uint16_t": "word", "uint32_t": "longword", "cfrunloopmode": "cfstringref", "cftyperef*": "var cftyperef",
    "axobserverref*": "var axobserverref", "const cfdictionarykeycallbacks*": "cfdictionarykeycallbacksptr",
    "const cfdictionaryvaluecallbacks*": "cfdictionaryvaluecallbacksptr",
}
# Names of the translation for the same type.
SYNONYMS = {"cfhashcode": "unsignedlong", "sint32": "longint"}


def pascal(c_type):
    """The translation's name for a C type."""
    name = re.sub(r"\s+", " ", c_type).replace(" *", "*").strip().lower()
    name = name if name in PASCAL else re.sub(r"^const ", "", name)
    return PASCAL.get(name, name)


def plain(pascal_type):
    name = pascal_type.strip().lower()
    return SYNONYMS.get(name, name)


def pascal_parameters(text):
    """(name, type) pairs of a Pascal parameter list."""
    result = []
    for group in filter(None, (part.strip() for part in re.sub(r"\{[^}]*\}", "", text or "").split(";"))):
        names, _, kind = group.rpartition(":")
        by_reference = bool(re.match(r"var\s", names))
        for name in re.sub(r"^(var|const)\s", "", names).split(","):
            result.append((name.strip(), ("var " if by_reference else "") + plain(kind)))
    return result


def c_parameters(text):
    result = []
    for part in filter(None, (part.strip() for part in text.split(","))):
        if part != "void":
            kind, name = re.match(r"(.*?)(\w+)$", part, re.S).groups()
            result.append((name, pascal(kind)))
    return result


def read_translation(folder):
    functions, variables, constants, records, callbacks, types = {}, {}, {}, {}, {}, {}
    for path in sorted(path for path in folder.glob("*.pas") if path.name.startswith(FILES)):
        text = path.read_text(encoding="latin-1")
        for match in re.finditer(
                r"^(?:function|procedure)\s+\w+\s*(?:\((.*?)\))?\s*(?::\s*(\w+))?\s*;\s*external name '_(\w+)'", text, re.M | re.S):
            functions.setdefault(match[3], (plain(match[2] or ""), pascal_parameters(match[1])))
        for match in re.finditer(r"^var (\w+): (\w+); external name '_\w+'", text, re.M):
            variables.setdefault(match[1], plain(match[2]))
        for match in re.finditer(r"^\s*(k\w+)\s*=\s*(-?\$?[0-9A-Fa-f]+)\s*;", text, re.M):
            constants.setdefault(match[1], int(match[2].replace("$", ""), 16 if "$" in match[2] else 10))
        for match in re.finditer(r"^\s*(\w+) = record\s*\n(.*?)^\s*end;", text, re.M | re.S):
            records.setdefault(match[1], [(name, plain(kind)) for name, kind in
                                          re.findall(r"^\s*(\w+):\s*(\w+);", match[2], re.M)])
        for match in re.finditer(r"^\s*(\w+) = (?:function|procedure)\((.*?)\)(?:: (\w+))?;", text, re.M):
            callbacks.setdefault(match[1], (plain(match[3] or ""), pascal_parameters(match[2])))
        for match in re.finditer(r"^\s*(\w+) = (\w+);", text, re.M):
            types.setdefault(match[1], plain(match[2]))
    return functions, variables, constants, records, callbacks, types


def read_headers(folder):
    """(name, kind, what) of every declaration."""
    found = []
    for header in HEADERS:
        text = re.sub(r"//.*|^#.*", "", (folder / header).read_text(encoding="utf-8"), flags=re.M)
        text = re.sub(r"CF_BRIDGED_TYPE\(\w+\)", "", text)
        for result, name, parameters in re.findall(r"^(\w[\w ]*?[\s*]+)(\w+)\(([^;{)]*)\);", text, re.M):
            found.append((name, "function", (pascal(result), c_parameters(parameters))))
        for result, name, parameters in re.findall(r"^typedef ([\w ]+[\s*]+)\(\*(\w+)\)\((.*?)\);", text, re.M | re.S):
            found.append((name, "callback", (pascal(result), c_parameters(parameters))))
        for kind, name in re.findall(r"^extern ([\w ]+?) (\w+);", text, re.M):
            found.append((name, "variable", pascal(re.sub(r" const$", "", kind))))
        for name, value in re.findall(r"\b(k\w+) = (-?\w+)", text):
            found.append((name, "constant", int(value, 0)))
        for body, name in re.findall(r"^typedef struct \{(.*?)\} (\w+);", text, re.M | re.S):
            found.append((name, "record", [(field, pascal(kind)) for kind, field in re.findall(r"(\w+) (\w+);", body)]))
        for kind, name in re.findall(r"^typedef ((?:unsigned )?\w+) (\w+);", text, re.M):
            found.append((name, "type", pascal(kind)))
        names = {name for name, _, _ in found}
        overlooked = set(re.findall(r"\b((?:CF|AX)\w+)\(", text)) - names
        if overlooked:
            sys.exit(f"{header}: not understood: {', '.join(sorted(overlooked))}")
    return found


def difference(ours, theirs):
    if ours == theirs:
        return None
    lower = lambda pairs: [(name.lower(), kind) for name, kind in pairs]
    if isinstance(ours, tuple) and ours[0] == theirs[0] and lower(ours[1]) == lower(theirs[1]):
        return None
    return f"here {ours}, there {theirs}"


def read_allowed(path):
    allowed = {}
    for line in path.read_text(encoding="utf-8").splitlines():
        if line.strip() and not line.startswith("#"):
            name, _, reason = line.partition(" ")
            if not reason.strip():
                sys.exit(f"{path}: {name} is allowed without a reason")
            allowed[name] = reason.strip()
    return allowed


def main():
    headers, allowed_path = map(pathlib.Path, sys.argv[1:3])
    translation = pathlib.Path(sys.argv[3]) if len(sys.argv) > 3 else TRANSLATION
    if not translation.is_dir():
        print(f"skipped: {translation} is missing; it comes with the package fpc-source-3.2.2")
        return SKIPPED
    functions, variables, constants, records, callbacks, types = read_translation(translation)
    known = {"function": functions, "variable": variables, "constant": constants, "record": records,
             "callback": callbacks, "type": types}
    allowed = read_allowed(allowed_path)
    agree, needed, wrong = {kind: 0 for kind in known}, set(), []
    for name, kind, ours in read_headers(headers):
        if name not in known[kind]:
            problem = "unknown to the translation"
        else:
            problem = difference(ours, known[kind][name])
        if problem is None:
            agree[kind] += 1
        elif name in allowed:
            needed.add(name)
        else:
            wrong.append(f"{kind} {name}: {problem}")
    wrong += [f"allowed without need: {name}" for name in allowed.keys() - needed]
    print("agree: " + ", ".join(f"{count} {kind}s" for kind, count in agree.items()) + f"; allowed: {len(needed)}")
    print("\n".join(wrong))
    if sum(agree.values()) == 0:
        print("nothing was compared")
    return 1 if wrong or sum(agree.values()) == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
