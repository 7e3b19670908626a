#!/usr/bin/env python3
"""The checks of the bundle notice what is wrong: each test breaks a copy of the bundle that has been built.

Usage: faults_test.py FOLDER PICTURES VERSION      ends with 77 when no bundle has been built"""
import contextlib
import io
import pathlib
import plistlib
import shutil
import sys
import tempfile
import unittest
from unittest import mock

import check_bundle
import ledger
import macho

VERSION, PICTURES, FOLDER = sys.argv.pop(), pathlib.Path(sys.argv.pop()), pathlib.Path(sys.argv.pop())
PROCESSORS = ("arm64", "x86_64")


class FaultsTest(unittest.TestCase):
    def setUp(self):
        folder = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, folder)
        self.bundle = folder / "Orvantile.app"
        shutil.copytree(FOLDER / "Orvantile.app", self.bundle, symlinks=True)
        self.program = self.bundle / "Contents/MacOS/Orvantile"

    def faults(self):
        pictures = list(PICTURES.glob("*.png"))
        return (check_bundle.check_information(self.bundle, VERSION) + check_bundle.check_layout(self.bundle, pictures) +
                check_bundle.check_icon(self.bundle) + check_bundle.check_program(self.bundle, PROCESSORS))

    def assert_only_fault(self, beginning):
        faults = self.faults()
        self.assertTrue(faults and all(fault.startswith(beginning) for fault in faults), faults)

    def test_of_nothing_broken_there_are_none(self):
        self.assertEqual(self.faults(), [])

    def test_information(self):
        path = self.bundle / "Contents/Info.plist"
        whole = plistlib.loads(path.read_bytes())
        for key, value in (("LSUIElement", False), ("CFBundleIdentifier", "org.example"), ("LSMinimumSystemVersion", "14.0"),
                           ("CFBundleVersion", "9"), ("SUFeedURL", "https://example.org")):
            path.write_bytes(plistlib.dumps({**whole, key: value}))
            self.assert_only_fault(key)

    def test_layout(self):
        (self.bundle / "Contents/Frameworks").rmdir()
        self.assert_only_fault("Contents")

    def test_pictures(self):
        inner = self.bundle / "Contents/Resources/Orvantile_Orvantile.bundle"
        shutil.copy(inner / "PreviewDark.png", inner / "PreviewLight.png")
        self.assert_only_fault("PreviewLight.png")
        (inner / "PreviewLight.png").unlink()
        with self.assertRaises(FileNotFoundError):
            self.faults()

    def test_mode(self):
        self.program.chmod(0o644)
        self.assert_only_fault("the program may not be run")

    def test_icon(self):
        path = self.bundle / "Contents/Resources/Orvantile.icns"
        whole = path.read_bytes()
        path.write_bytes(whole[:-1])
        self.assert_only_fault("the icon")
        path.write_bytes(whole.replace(b"ic07", b"ic06"))
        self.assert_only_fault("icon")

    def test_processors(self):
        shutil.copy(FOLDER / "arm64/bin/Orvantile.app/Contents/MacOS/Orvantile", self.program)
        self.assert_only_fault("processors")

    def test_run_path_and_libraries(self):
        whole = self.program.read_bytes()
        self.program.write_bytes(whole.replace(b"@executable_path/../Frameworks", b"@executable_path/../Somewhere_"))
        self.assertEqual([fault.split(":")[0] for fault in self.faults()], ["x86_64", "arm64"])
        self.program.write_bytes(whole.replace(b"@rpath/QtCore.framework", b"/build/QtCore.frame/wrk"))
        self.assert_only_fault("libraries of")

    def compare_with(self, entries):
        objects = [str(path) for processor in PROCESSORS for path in (FOLDER / processor / "src").rglob("*.o")]
        said = io.StringIO()
        with mock.patch.object(ledger, "read", lambda: entries), mock.patch.object(sys, "argv", ["", str(self.program), *objects]), \
                contextlib.redirect_stdout(said):
            return ledger.main(), said.getvalue()

    def test_ledger(self):
        entries = ledger.read()
        self.assertEqual(self.compare_with(entries)[0], 0)
        for entry in (ledger.Entry("AppKit", "class", "NSPanel"), ledger.Entry("ApplicationServices", "symbol", "_AXObserverCreate"),
                      ledger.Entry("AppKit", "selector", "setLevel:"), ledger.Entry("Sparkle", "class", "SPUStandardUpdaterController")):
            self.assertIn(entry, entries)
            result, said = self.compare_with([other for other in entries if other != entry])
            self.assertEqual(result, 0 if entry.owner == "Sparkle" else 1, said)
        for entry in (ledger.Entry("AppKit", "class", "NSWindow"), ledger.Entry("Sparkle", "class", "SPUOther")):
            result, said = self.compare_with([*entries, entry])
            self.assertEqual(result, 1)
            self.assertIn(f"in the ledger without need: {entry}", said)
        moved = [ledger.Entry("Foundation", "selector", "setLevel:") if entry.name == "setLevel:" else entry for entry in entries]
        self.assertIn("not declared by its framework: Foundation selector setLevel:", self.compare_with(moved)[1])

    def test_an_object_of_this_system_is_no_image(self):
        self.assertEqual(macho.read(pathlib.Path(sys.executable)), [])


if __name__ == "__main__":
    if not (FOLDER / "Orvantile.app").is_dir():
        print("skipped: no bundle has been built")
        sys.exit(77)
    unittest.main()
