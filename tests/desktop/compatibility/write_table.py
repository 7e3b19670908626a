#!/usr/bin/python3
"""Writes the table of programs from the results of the survey.

Usage: write_table.py RESULTS REASONS OUTPUT
Fails when something that was missed, or named wrongly, has no reason.
"""
import pathlib
import sys

FIRED = ("right", "wrong", "missed")
GROUPS = (
    ("GTK 2", ("GTK 2",)),
    ("GTK 3 with a menu bar", ("GTK 3",)),
    ("Qt 5, Qt 6 and KDE", ("Qt 5", "Qt 6", "KDE Frameworks 5")),
    ("wxWidgets, LibreOffice, Java", ("wxWidgets (GTK 3)", "VCL (GTK 3)", "Java Swing")),
    ("Browsers", ("Gecko", "Chromium")),
    ("No menu bar", ("GTK 3, no menu bar", "GTK 4")),
)

INTRODUCTION = """# Which programs are understood

[`scripts/compatibility`](../scripts/compatibility) starts each of these programs of Debian 12 on a desktop of its own,
with the whole of Orvantile beside it. It learns from another source what the program's menus show, fires every
shortcut in them that is safe to fire, and compares what the HUD shows with what the menu shows: keys and title. This
page is written from [the results](../tests/desktop/compatibility/results), one file a program, which list every shortcut.

- **In menus**: different shortcuts on items of the main window's menus.
- **Left out**: not fired, because that ends the program, prints, takes the whole screen, starts another program, or
  belongs to the window manager. The result files say which and why.
- **Off**: the command was disabled, or the program did not act on the key; nothing was shown, as it should be.
- **Fired**: the others. They are **right**, **wrong** (another text than in the menu) or **missed** (nothing shown).
- **Late**: named right at the second attempt only. What is missed is fired once more, because a program may be slow to
  open the window of the shortcut before, and the keys reach that one.
- **Without keys that type** leaves out the missed shortcuts that are plain characters, such as the tool keys of GIMP.
- **False**: something was shown though nothing was there to fire. Five key combinations that no menu has are pressed in
  each program for this as well.

Where the truth comes from: in Qt programs a plugin of the tests reads the menus and hears which actions are really
triggered. Elsewhere a reader that shares no code with Orvantile asks the accessibility bus at the moment of each key
press; there “enabled” is taken for “will fire”, and a shortcut that the program does not tell is not counted at all. Of programs
without menus the truth is what their window of keyboard shortcuts lists; whether the keys did anything is not known.
"""


class Result:
    def __init__(self, path):
        self.name = path.stem
        self.fields = {}
        self.outcomes = []
        for line in path.read_text().splitlines():
            kind, *fields = line.split("\t")
            if kind in FIRED + ("false", "quiet", "skipped"):
                fields += [""] * (4 - len(fields))
                self.outcomes.append((kind, *fields[:4]))
            else:
                self.fields[kind] = fields

    def field(self, name, index=0):
        values = self.fields.get(name, [])
        return values[index] if index < len(values) else ""

    def count(self, *kinds):
        return sum(1 for outcome in self.outcomes if outcome[0] in kinds)

    def off(self):
        return sum(1 for outcome in self.outcomes if outcome[0] == "quiet" and outcome[2] != "(in no menu)")

    def typing(self):
        """How many missed shortcuts are keys that type text."""
        return sum(1 for kind, keys, *_ in self.outcomes if kind == "missed" and types_text(keys))

    def late(self):
        return sum(1 for outcome in self.outcomes if outcome[4] == "second attempt")

    def fired(self):
        return self.count(*FIRED)


def types_text(keys):
    """Whether the keys type a character: no Control, Alt or Super, and no function or navigation key."""
    key = keys.removeprefix("⇧")
    return len(key) == 1 and key not in "⌫⌦⏎⌅⎋⇥⇤↖↘⇞⇟←→↑↓"


def read_reasons(path):
    reasons = {}
    for line in path.read_text().splitlines():
        if line and not line.startswith("#"):
            program, keys, reason = line.split("\t")
            reasons[program, keys] = reason
    return reasons


def percent(right, fired):
    return f"{100 * right / fired:.1f} %" if fired else "–"


def row(cells):
    return "| " + " | ".join(str(cell).replace("|", "\\|") for cell in cells) + " |"


def summary(results):
    lines = [row(("Programs", "Fired", "Right", "Wrong", "Missed", "False", "Named right", "Without keys that type")),
             "|---|--:|--:|--:|--:|--:|--:|--:|"]

    def add(title, members):
        fired, right = sum(r.fired() for r in members), sum(r.count("right") for r in members)
        lines.append(row((title, fired, right, sum(r.count("wrong") for r in members),
                          sum(r.count("missed") for r in members), sum(r.count("false") for r in members),
                          percent(right, fired), percent(right, fired - sum(r.typing() for r in members)))))

    for title, toolkits in GROUPS:
        members = [result for result in results if result.field("toolkit") in toolkits]
        if members:
            add(f"{title} ({len(members)})", members)
    with_menus = [result for result in results if result.field("toolkit") not in GROUPS[-1][1]]
    add(f"**All that have menus** ({len(with_menus)})", with_menus)
    return lines


def table(results):
    lines = [row(("Program", "Version", "Toolkit", "Named by", "In menus", "Left out", "Off", "Fired", "Right", "of these late",
                  "Wrong", "Missed", "False")), "|---|---|---|---|--:|--:|--:|--:|--:|--:|--:|--:|--:|"]
    for result in results:
        lines.append(row((f"[{result.field('program')}](../tests/desktop/compatibility/results/{result.name}.tsv)",
                          result.field("package", 1), result.field("toolkit"),
                          result.field("source") if result.count("right") else "–", result.field("accelerators"),
                          result.count("skipped"), result.off(), result.fired(), result.count("right"),
                          result.late(), result.count("wrong"), result.count("missed"), result.count("false"))))
    return lines


def faults(results, reasons):
    lines = [row(("Program", "Keys", "Menu shows", "HUD showed", "Reason")), "|---|---|---|---|---|"]
    complete = True
    typed = {}
    for result in results:
        for kind, keys, title, shown, _ in result.outcomes:
            if kind not in ("wrong", "missed", "false"):
                continue
            reason = reasons.get((result.name, keys)) or reasons.get((result.name, "*"))
            if kind == "missed" and types_text(keys):
                typed.setdefault(result.field("program"), []).append(f"{keys} {title}")
                continue
            if reason is None:
                print(f"no reason: {result.name}\t{keys}\t{title}\t{shown}", file=sys.stderr)
                complete = False
            lines.append(row((result.field("program"), keys, title, shown or "nothing", reason or "?")))
    if typed:
        lines += ["", "These keys type text, and what types text is never looked up, so that nothing typed is:", ""]
        lines += [f"- {program}: {', '.join(commands)}" for program, commands in typed.items()]
    return lines, complete


def main():
    results_folder, reasons_file, output = map(pathlib.Path, sys.argv[1:4])
    results = [Result(path) for path in sorted(results_folder.glob("*.tsv"))]
    order = [toolkit for _, toolkits in GROUPS for toolkit in toolkits]
    results.sort(key=lambda result: (order.index(result.field("toolkit")), result.field("program").lower()))
    fault_lines, complete = faults(results, read_reasons(reasons_file))
    notes = [f"- {result.field('program')}: {result.field('note')}" for result in results if result.field("note")]
    parts = [INTRODUCTION, "## All together\n", *summary(results), "", "## Each program\n", *table(results), ""]
    if notes:
        parts += [*notes, ""]
    parts += ["## What was not named right, and why\n", *fault_lines, ""]
    output.write_text("\n".join(parts))
    return 0 if complete else 1


if __name__ == "__main__":
    sys.exit(main())
