#!/usr/bin/env python3
"""Lints the shell lines of the hosted workflow, and looks whether the files that they name exist.

Usage: lint_workflow.py SHELLCHECK WORKFLOW SOURCES"""
import pathlib
import re
import subprocess
import sys

shellcheck, workflow, sources = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])


def shell_lines(text):
    """(name, lines) of each step that runs something."""
    steps = re.split(r"^      - ", text, flags=re.M)[1:]
    for step in steps:
        name = re.match(r"name: (.*)", step)
        block = re.search(r"^        run: \|\n((?:          .*\n|\n)+)", step, re.M)
        line = re.search(r"^        run: ([^|\n].*)\n", step, re.M)
        if block or line:
            yield name[1], re.sub(r"^ {10}", "", block[1], flags=re.M) if block else line[1] + "\n"


def main():
    found = list(shell_lines(workflow.read_text(encoding="utf-8")))
    wrong = [] if len(found) == workflow.read_text(encoding="utf-8").count("        run: ") else ["steps were overlooked"]
    for name, lines in found:
        lines = re.sub(r"\$\{\{[^}]*\}\}", "value", lines)  # filled in by the host
        checked = subprocess.run([shellcheck, "--shell=bash", "-"], input="set -e\n" + lines, capture_output=True, text=True)
        if checked.returncode != 0:
            wrong.append(f"{name}: {checked.stdout}{checked.stderr}")
        wrong += [f"{name}: no file {path}" for path in re.findall(r"(?<![\w/.])((?:scripts|tests)/[\w/.]+)", lines)
                  if not (sources / path).is_file()]
    print("\n".join(wrong) or f"{len(found)} steps are fine")
    return 1 if wrong or not found else 0


if __name__ == "__main__":
    sys.exit(main())
