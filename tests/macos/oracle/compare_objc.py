#!/usr/bin/env python3
"""Compares the declarations of Objective-C interfaces in tests/macos/sdk with an independent translation of the same
interfaces to Pascal, which Debian ships as source (package fpc-source-3.2.2): classes and what they inherit from,
selectors with the types of arguments and results, constants and variables. What the translation does not know or says
otherwise has to be on the reviewed list beside this file; entries of the list that are not needed are errors.

Usage: compare_objc.py HEADERS ALLOWED [PASCAL]      exits with 77, and says why, when there is no translation"""
import pathlib
import re
import sys

TRANSLATION = pathlib.Path("/usr/share/fpcsrc/3.2.2/packages/cocoaint/src")
FOLDERS = ("Foundation", "AppKit", "QuartzCore")  # of the declarations
SKIPPED = 77

# Types that have another name in the translation.
PASCAL = {"void": "", "bool": "objcbool", "class": "pobjc_class", "unsigned char*": "pchar",
          "unsigned char**": "pchar", "const unichar*": "unicharptr", "unichar*": "unicharptr", "void*": "pointer",
          "const t*": "idptr"}
# Names that were given later to plain strings.
STRINGS = {"nsappearancename", "nsnotificationname", "nsrunloopmode", "nssoundname", "nscolorspacename",
           "nsaccessibilityrole", "nskeyvaluechangekey"}
# Names of the translation for the same type.
SYNONYMS = {"nspoint": "cgpoint", "nssize": "cgsize", "nsrect": "cgrect", "boolean": "objcbool",
            # Names that were given later to plain integers.
            "nscontrolstatevalue": "nsinteger", "nswindowlevel": "nsinteger", "nswindowstylemask": "nsuinteger"}
PLACEHOLDERS = {"t", "k", "v"}  # of generic classes


def pascal(c_type):
    """The translation's name for a type of ours."""
    if "(^)" in c_type:
        return "opaquecblock"
    name = re.sub(r"\s+", " ", re.sub(r"<[^<>]*>", "", re.sub(r"<[^<>]*<[^<>]*>[^<>]*>", "", c_type)))
    name = name.replace(" *", "*").replace("* ", "*").strip().lower()
    name = PASCAL.get(name, name)
    name = name[:-1] if name.endswith("*") else name
    name = "id" if name in PLACEHOLDERS else "nsstring" if name in STRINGS else name
    return SYNONYMS.get(name, name)


def plain(pascal_type):
    name = pascal_type.strip().lower()
    name = "id" if name.endswith("protocol") else name
    return SYNONYMS.get(name, name)


class Interface:
    def __init__(self):
        self.parents, self.methods = [], {}


def read_pascal_method(text, interface):
    match = re.match(r"(class )?(procedure|function|constructor)\s+\w+\s*(?:\((.*)\))?\s*(?::\s*(\w+))?\s*;.*?message '([^']+)'",
                     text, re.S)
    if match:
        types = []
        for group in filter(None, (part.strip() for part in (match[3] or "").split(";"))):
            names, _, kind = group.rpartition(":")
            types += [plain(kind)] * len(names.split(","))
        interface.methods[("+" if match[1] else "-") + match[5]] = (plain(match[4] or ""), types)


def read_translation(folder):
    interfaces, constants, variables = {}, {}, {}
    for path in sorted(folder.glob("*/*.inc")):
        text = re.sub(r"\{[^{}]*\}", "", path.read_text(encoding="latin-1"))
        for match in re.finditer(r"^  (\w+) = objc(class|category|protocol) external(?: name '(\w+)')?\s*(?:\(([\w, \n]*)\))?(.*?)\n  end;",
                                 text, re.M | re.S):
            parents = [name.strip() for name in (match[4] or "").split(",") if name.strip()]
            # A category adds to the class in its brackets.
            name = parents[0] if match[2] == "category" and parents else match[1]
            interface = interfaces.setdefault(name, Interface())
            interface.parents += [] if match[2] == "category" else parents
            for method in re.findall(r"(?:class )?(?:procedure|function|constructor)[^']*?message '[^']+'", match[5]):
                read_pascal_method(method, interface)
        for name, value in re.findall(r"^\s*(\w+)\s*=\s*([^;:]+?)\s*;", text, re.M):
            constants.setdefault(name, value)
        for name, kind in re.findall(r"^\s*(\w+)\s*:\s*(\w+)\s*;\s*cvar; external;", text, re.M):
            variables.setdefault(name, plain(kind))
    return interfaces, constants, variables


def inherited(interfaces, name, selector):
    """The method of that selector, from wherever the class has it."""
    waiting, seen = [name], set()
    while waiting:
        current = waiting.pop(0)
        interface = interfaces.get(current)
        if interface is None or current in seen:
            continue
        seen.add(current)
        if selector in interface.methods:
            return interface.methods[selector]
        waiting += interface.parents
    return None


def value_of(text, constants, depth=0):
    """A number for an expression of either language, or None."""
    text = re.sub(r"\bshl\b", "<<", text).replace("$", "0x")
    for name in set(re.findall(r"(?<!\w)[A-Za-z_]\w+", text)):
        inner = value_of(constants[name], constants, depth + 1) if name in constants and depth < 4 else None
        if inner is None:
            return None
        text = re.sub(rf"\b{name}\b", f"({inner})", text)
    try:
        return eval(text, {"__builtins__": {}})  # numbers and operators only
    except (SyntaxError, NameError, TypeError):
        return None


def property_methods(attributes, declaration):
    match = re.match(r"(.*?)(\w+)$", declaration.strip(), re.S)
    kind, name = pascal(match[1]), match[2]
    sign = "+" if re.search(r"\bclass\b", attributes) else "-"
    getter = re.search(r"getter=(\w+)", attributes)
    methods = {sign + (getter[1] if getter else name): (kind, [])}
    if "readonly" not in attributes:
        methods[f"{sign}set{name[0].upper()}{name[1:]}:"] = ("", [kind])
    return methods


def read_method(text):
    match = re.match(r"([-+]) \(((?:[^()]|\([^()]*\))*)\)(.*)$", text, re.S)
    sign, result, rest = match.groups()
    parts = re.findall(r"(\w+):\(((?:[^()]|\([^()]*\))*)\)\s*\w+", rest)
    selector = "".join(name + ":" for name, _ in parts) or rest.strip()
    return sign + selector, (pascal(result), [pascal(kind) for _, kind in parts])


def read_headers(folder):
    """(interface, parent, methods) of every class, category and protocol; constants; variables."""
    interfaces, constants, variables = [], {}, {}
    for header in sorted(path for name in FOLDERS for path in (folder / name).glob("*.h")):
        text = re.sub(r"//.*|^\s*#.*(\\\n.*)*", "", header.read_text(encoding="utf-8"), flags=re.M)
        for kind, name, extra, body in re.findall(
                r"@(interface|protocol)\s+(\w+)(?:<[\w, ]*>)?(?![\w, ;<]*;)([^\n]*)\n(.*?)@end", text, re.S):
            parent = re.search(r":\s*(\w+)", extra)
            body = re.sub(r"^\s*\{.*?\}", "", body, flags=re.S)
            methods = {}
            for attributes, declaration in re.findall(r"@property\s*(?:\(([^)]*)\))?\s*([^;]+);", body):
                methods.update(property_methods(attributes, declaration))
            for method in re.findall(r"^[-+] \([^;]*;", re.sub(r"@property[^;]*;", "", body), re.M):
                methods.update([read_method(method[:-1])])
            interfaces.append((name + ("Protocol" if kind == "protocol" else ""), parent and parent[1], methods))
        for body in re.findall(r"NS_(?:ENUM|OPTIONS)\(\w+, \w+\)\s*\{(.*?)\}", text, re.S):
            following = 0
            for name, value in re.findall(r"(\w+)(?:\s*=\s*([^,]+))?", body):
                constants[name] = value_of(value, {}) if value else following
                following = constants[name] + 1
        for name, value in re.findall(r"^static const \w+ (\w+) = ([^;]+);", text, re.M):
            constants[name] = value_of(value, {})
        for kind, name in re.findall(r'^extern "C" (\w+\*?) (?:const )?(\w+);', text, re.M):
            variables[name] = pascal(kind)
    return interfaces, constants, variables


def read_allowed(path):
    """(names with the reasons, former names of constants)"""
    allowed, renamed = {}, {}
    for line in path.read_text(encoding="utf-8").splitlines():
        if line.strip() and not line.startswith("#"):
            name, _, reason = line.partition("  ")
            if not reason.strip():
                sys.exit(f"{path}: {name} is allowed without a reason")
            former = re.match(r"formerly (\w+)$", reason.strip())
            if former:
                renamed[name] = former[1]
            else:
                allowed[name] = reason.strip()
    return allowed, renamed


def main():
    headers, allowed_path = map(pathlib.Path, sys.argv[1:3])
    translation = pathlib.Path(sys.argv[3]) if len(sys.argv) > 3 else TRANSLATION
    if not translation.is_dir():
        print(f"skipped: {translation} is missing; it comes with the package fpc-source-3.2.2")
        return SKIPPED
    theirs, their_constants, their_variables = read_translation(translation)
    interfaces, constants, variables = read_headers(headers)
    allowed, renamed = read_allowed(allowed_path)
    agree, needed, wrong = {"class": 0, "method": 0, "constant": 0, "variable": 0}, set(), []

    def note(kind, name, problem):
        if problem is None:
            agree[kind] += 1
        elif name in allowed:
            needed.add(name)
        else:
            wrong.append(f"{kind} {name}: {problem}")

    for name, parent, methods in interfaces:
        if name not in theirs:
            note("class", name, "unknown to the translation")
            continue
        if parent:
            found = theirs[name].parents[:1]
            note("class", name, None if found == [parent] else f"inherits from {parent} here, from {found} there")
        for selector, ours in methods.items():
            found = inherited(theirs, name, selector)
            problem = "unknown to the translation" if found is None else None if found == ours else \
                f"here {ours}, there {found}"
            note("method", f"{selector[0]}[{name} {selector[1:]}]", problem)
    for name, value in constants.items():
        known = their_constants.get(renamed.get(name, name))
        found = value_of(known, their_constants) if known is not None else None
        if name in renamed:
            needed.add(name)
        note("constant", name, "unknown to the translation" if found is None else None if found == value else
             f"here {value}, there {found}")
    for name, kind in variables.items():
        found = their_variables.get(name)
        note("variable", name, "unknown to the translation" if found is None else None if found == kind else
             f"here {kind}, there {found}")
    wrong += [f"allowed without need: {name}" for name in sorted((allowed.keys() | renamed.keys()) - needed)]
    print("agree: " + ", ".join(f"{count} of kind {kind}" for kind, count in agree.items()) + f"; allowed: {len(needed)}")
    print("\n".join(wrong))
    nothing = [kind for kind, count in agree.items() if count == 0]
    if nothing:
        print(f"nothing was compared of: {', '.join(nothing)}")
    return 1 if wrong or nothing else 0


if __name__ == "__main__":
    sys.exit(main())
