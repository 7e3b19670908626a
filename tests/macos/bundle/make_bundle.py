#!/usr/bin/env python3
"""Builds the application bundle for a Mac on another system, for both processors, with the product's own build
description; joins the two and checks what came out. Ends with 77, and says why, when the headers of a Mac cannot be
had.

Usage: make_bundle.py SOURCES FOLDER QT_HEADERS QT_LIBRARIES VERSION"""
import json
import os
import pathlib
import shlex
import shutil
import subprocess
import sys

import check_bundle

HERE = pathlib.Path(__file__).resolve().parent
FEED, KEY = "https://updates.invalid/appcast.xml", "AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA="


def run(*command, **options):
    result = subprocess.run(command, text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, **options)
    if result.returncode != 0:
        print(result.stdout[-6000:])
        print(f"{' '.join(map(str, command[:3]))} … ended with {result.returncode}")
        sys.exit(result.returncode if result.returncode == 77 else 1)


def make_sparkle(folder):
    """A framework with as many links as the real one."""
    shutil.rmtree(folder, ignore_errors=True)
    version = folder / "Versions/B"
    version.mkdir(parents=True)
    (version / "Sparkle").write_bytes(b"")
    (folder / "Versions/Current").symlink_to("B")
    (folder / "Sparkle").symlink_to("Versions/Current/Sparkle")


def build(sources, folder, sdk, processor, headers, packaging):
    target = folder / processor
    options = {
        "CMAKE_TOOLCHAIN_FILE": HERE / "toolchain.cmake", "ORVANTILE_MACOS_SDK": sdk,
        "ORVANTILE_MACOS_ARCHITECTURE": processor, "Qt6_DIR": HERE / "qt", "ORVANTILE_QT_HEADERS": headers,
        "ORVANTILE_TESTS": "OFF", "CMAKE_BUILD_TYPE": "Release", "CMAKE_C_FLAGS_RELEASE": "-O1",
        "CMAKE_CXX_FLAGS_RELEASE": "-O1", "CMAKE_OBJCXX_FLAGS_RELEASE": "-O1", **packaging,
    }
    run("cmake", "--fresh", "-S", sources, "-B", target, "-G", "Ninja", *(f"-D{name}={value}" for name, value in options.items()))
    run("cmake", "--build", target, "--target", "orvantile", "--parallel", "2")
    return target / "bin/Orvantile.app"


def join(folder, bundles):
    """One bundle with the program for all processors."""
    whole = folder / "Orvantile.app"
    shutil.rmtree(whole, ignore_errors=True)
    shutil.copytree(next(iter(bundles.values())), whole, symlinks=True)
    programs = [bundle / "Contents/MacOS/Orvantile" for bundle in bundles.values()]
    run("llvm-lipo-14", "-create", *programs, "-output", whole / "Contents/MacOS/Orvantile")
    return whole


def check_conformance(sources, target):
    """Compiles the conformance files as the files of the program next to them in kind: C and dispatch against the
    headers of a Mac."""
    commands = {pathlib.Path(entry["file"]).name: entry for entry in json.loads((target / "compile_commands.json").read_text())}
    for model, name in (("MainQueue.cpp", "AccessibilityConformance.cpp"), ("MacSounds.mm", "AppKitConformance.mm")):
        command = shlex.split(commands[model]["command"])
        command = command[command.index(next(word for word in command if "clang" in word)):command.index("-o")]
        precompiled = [index for index, word in enumerate(command) if word.endswith((".pch", ".hxx"))]
        for index in reversed(precompiled):
            del command[index - 3:index + 1]  # -Xclang -include -Xclang FILE
        run(*command, "-fsyntax-only", sources / "tests/macos/conformance" / name, cwd=target)


def main():
    sources, folder = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    headers, libraries, version = sys.argv[3:6]
    os.environ.update(CCACHE_BASEDIR=str(sources), CCACHE_NOHASHDIR="1")
    sdk, sparkle = folder / "sdk", folder / "Sparkle.framework"
    run(sys.executable, HERE / "make_sdk.py", sdk, libraries)
    make_sparkle(sparkle)
    bundles = {
        "arm64": build(sources, folder, sdk, "arm64", headers, {}),
        "x86_64": build(sources, folder, sdk, "x86_64", headers,
                        {"ORVANTILE_UPDATE_FEED": FEED, "ORVANTILE_UPDATE_KEY": KEY, "ORVANTILE_SPARKLE_FRAMEWORK": sparkle}),
    }
    check_conformance(sources, folder / "arm64")
    whole = join(folder, bundles)

    pictures = list((sources / "src/resources/Orvantile_Orvantile.bundle").glob("*.png"))
    faults = check_bundle.check_information(whole, version)
    faults += check_bundle.check_information(bundles["x86_64"], version, FEED, KEY)
    faults += check_bundle.check_sparkle(bundles["x86_64"], sparkle)
    faults += check_bundle.check_layout(whole, pictures)
    faults += check_bundle.check_icon(whole)
    faults += check_bundle.check_program(whole, bundles)
    print("\n".join(faults) or f"{whole} is complete")
    objects = [path for processor in bundles for path in (folder / processor / "src").rglob("*.o")]
    ledger = subprocess.run([sys.executable, HERE / "ledger.py", whole / "Contents/MacOS/Orvantile", *objects])
    sys.exit(1 if faults else ledger.returncode)


if __name__ == "__main__":
    main()
