#!/usr/bin/env python3
"""Runs the scripts as on a Mac: a copy of them in a folder of its own, and on the path nothing but stand-ins for the
tools of a Mac, which write down how they are called.

Usage: mac_scripts_test.py SCRIPTS"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

SCRIPTS = pathlib.Path(sys.argv.pop(1))
PLAIN = ("bash", "cat", "dirname", "env", "grep", "id", "mkdir", "mktemp", "rm", "sort", "tail")
RECORD = '#!/bin/sh\necho "$(basename "$0") $*" >> "$CALLS"\n'
STAND_INS = {
    "uname": "echo Darwin", "basename": 'exec /usr/bin/basename "$@"',
    "xcode-select": "", "ninja": "", "macdeployqt": "", "codesign": "", "hdiutil": "", "open": "", "ctest": "",
    "brew": 'if [ "$1" = --prefix ]; then echo "$PREFIX"; fi; if [ "$1" = list ]; then exit "${WITHOUT_QT:-0}"; fi',
    "cmake": 'if [ "$1" = --build ]; then mkdir -p build/release/bin/Orvantile.app; fi',
    "ditto": 'mkdir -p "$2"',
}


class MacScriptsTest(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)
        shutil.copytree(SCRIPTS, self.folder / "scripts")
        self.tools = self.folder / "prefix" / "bin"
        self.tools.mkdir(parents=True)
        for name in PLAIN:
            (self.tools / name).symlink_to(shutil.which(name))
        for name, body in STAND_INS.items():
            self.put_tool(name, body)
        self.calls = self.folder / "calls"

    def put_tool(self, name, body):
        path = self.tools / name
        path.write_text((RECORD if name not in ("uname", "basename") else "#!/bin/sh\n") + body + "\n")
        path.chmod(0o755)

    def run_script(self, name, *arguments, **variables):
        self.calls.write_text("")
        environment = {"PATH": str(self.tools), "CALLS": str(self.calls), "PREFIX": str(self.tools.parent),
                       "HOME": str(self.folder), **variables}
        result = subprocess.run([self.folder / "scripts" / name, *arguments], env=environment, capture_output=True, text=True)
        return result, [line for line in self.calls.read_text().splitlines() if not line.startswith("brew --prefix")]

    def test_builds_signs_packs_and_starts(self):
        result, calls = self.run_script("run")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(calls, [
            "xcode-select -p",
            "brew list --versions qt",
            f"cmake --preset release -DCMAKE_PREFIX_PATH={self.tools.parent};{self.tools.parent} "
            "-DORVANTILE_WARNINGS_ARE_ERRORS=OFF",
            "cmake --build build/release --target orvantile",
            "ditto build/release/bin/Orvantile.app build/macos/Orvantile.app",
            "macdeployqt build/macos/Orvantile.app -verbose=1",
            "codesign --force --deep --sign - build/macos/Orvantile.app",
            "codesign --verify --deep --strict build/macos/Orvantile.app",
            "hdiutil create -quiet -volname Orvantile -srcfolder build/macos/Orvantile.app -format UDZO -ov build/macos/Orvantile.dmg",
            "open build/macos/Orvantile.app",
        ])

    def test_only_packs_when_it_is_told_to(self):
        result, calls = self.run_script("run", "--package")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertTrue(calls[-1].startswith("hdiutil create"), calls)

    def test_signs_as_whom_it_is_told(self):
        _, calls = self.run_script("run", ORVANTILE_SIGN_AS="Developer ID")
        self.assertIn("codesign --force --deep --sign Developer ID build/macos/Orvantile.app", calls)

    def test_installs_what_is_missing_after_it_has_said_so(self):
        result, calls = self.run_script("run", WITHOUT_QT="1")
        self.assertIn("To be installed with Homebrew: qt\n", result.stdout)
        self.assertIn("brew install --quiet qt", calls)

    def test_starts_nothing_that_could_not_be_built(self):
        self.put_tool("cmake", 'echo "a wrong line"; exit 1')
        result, calls = self.run_script("run")
        self.assertEqual(result.returncode, 1)
        self.assertIn("a wrong line", result.stderr)
        self.assertTrue(calls[-1].startswith("cmake"), calls)

    def test_starts_nothing_whose_signature_is_wrong(self):
        self.put_tool("codesign", 'case $1 in --verify) exit 3;; esac')
        result, calls = self.run_script("run")
        self.assertNotEqual(result.returncode, 0)
        self.assertTrue(calls[-1].startswith("codesign --verify"), calls)

    def test_says_what_is_missing_that_it_cannot_install(self):
        self.put_tool("xcode-select", "exit 2")
        result, calls = self.run_script("run")
        self.assertEqual((result.returncode, calls), (2, ["xcode-select -p"]))
        self.assertIn("xcode-select --install", result.stderr)
        self.put_tool("xcode-select", "")
        (self.tools / "brew").unlink()
        result, _ = self.run_script("run")
        self.assertEqual(result.returncode, 2)
        self.assertIn("brew.sh", result.stderr)

    def test_has_no_demonstration(self):
        result, calls = self.run_script("run", "--demo")
        self.assertEqual((result.returncode, calls), (2, []))

    def test_runs_the_tests(self):
        result, calls = self.run_script("test", "-L", "unit")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(calls[-2:], ["cmake --build build/dev --target all",
                                      "ctest --test-dir build/dev --output-on-failure -L unit"])

    def test_packs_nothing_elsewhere(self):
        self.put_tool("uname", "echo Linux")
        result, calls = self.run_script("run", "--package")
        self.assertEqual((result.returncode, calls), (2, []))


if __name__ == "__main__":
    unittest.main()
