"""What an application bundle has to be like, for the system to take it as this program. Each function returns the
faults it has found."""
import plistlib
import struct

import macho

IDENTIFIER = "org.orvantile.Orvantile"
CONTENTS = {"Frameworks", "Info.plist", "MacOS", "Resources"}
SYSTEM_LIBRARIES = {
    "/System/Library/Frameworks/AppKit.framework/Versions/C/AppKit",
    "/System/Library/Frameworks/ApplicationServices.framework/Versions/A/ApplicationServices",
    "/System/Library/Frameworks/CoreFoundation.framework/Versions/A/CoreFoundation",
    "/System/Library/Frameworks/Foundation.framework/Versions/C/Foundation",
    "/usr/lib/libSystem.B.dylib", "/usr/lib/libc++.1.dylib", "/usr/lib/libobjc.A.dylib",
}
TOOLKIT = {f"@rpath/Qt{part}.framework/Versions/A/Qt{part}" for part in ("Core", "Gui", "Widgets")}
# Pixels of the entries of an icon.
ICON = {"icp4": 16, "icp5": 32, "ic07": 128, "ic08": 256, "ic09": 512, "ic10": 1024, "ic11": 32, "ic12": 64, "ic13": 256,
        "ic14": 512}


def differences(what, expected, found):
    return [] if expected == found else [f"{what}: expected {expected}, found {found}"]


def check_information(bundle, version, feed="", key=""):
    information = plistlib.loads((bundle / "Contents/Info.plist").read_bytes())
    expected = {
        "CFBundleIdentifier": IDENTIFIER, "CFBundleName": "Orvantile", "CFBundleExecutable": "Orvantile",
        "CFBundlePackageType": "APPL", "CFBundleIconFile": "Orvantile", "CFBundleInfoDictionaryVersion": "6.0",
        "CFBundleShortVersionString": version, "CFBundleVersion": version, "LSUIElement": True,
        "LSMinimumSystemVersion": "13.0", "NSPrincipalClass": "NSApplication", "NSHighResolutionCapable": True,
        "SUFeedURL": feed, "SUPublicEDKey": key,
    }
    return [fault for name, value in expected.items() for fault in differences(name, value, information.get(name))]


def check_layout(bundle, pictures):
    contents = bundle / "Contents"
    faults = differences("Contents", CONTENTS, {path.name for path in contents.iterdir()})
    faults += differences("MacOS", {"Orvantile"}, {path.name for path in (contents / "MacOS").iterdir()})
    inner = contents / "Resources/Orvantile_Orvantile.bundle"
    faults += differences("Resources", {"Orvantile.icns", inner.name}, {path.name for path in (contents / "Resources").iterdir()})
    faults += differences("pictures", sorted(path.name for path in pictures), sorted(path.name for path in inner.iterdir()))
    faults += [f"{picture.name} is another picture" for picture in pictures
               if (inner / picture.name).read_bytes() != picture.read_bytes()]
    if not (contents / "MacOS/Orvantile").stat().st_mode & 0o100:
        faults.append("the program may not be run")
    return faults


def check_icon(bundle):
    data = (bundle / "Contents/Resources/Orvantile.icns").read_bytes()
    if data[:4] != b"icns" or struct.unpack_from(">I", data, 4)[0] != len(data):
        return ["the icon is no icon"]
    found, offset = {}, 8
    while offset < len(data):
        kind, length = data[offset:offset + 4].decode(), struct.unpack_from(">I", data, offset + 4)[0]
        picture = data[offset + 8:offset + length]
        if picture[:8] != b"\x89PNG\r\n\x1a\n":
            return [f"{kind} of the icon is no picture"]
        found[kind] = struct.unpack_from(">2I", picture, 16)
        offset += length
    return differences("icon", {kind: (pixels, pixels) for kind, pixels in ICON.items()}, found)


def check_program(bundle, processors):
    images = macho.read(bundle / "Contents/MacOS/Orvantile")
    faults = differences("processors", sorted(processors), sorted(image.processor for image in images))
    for image in images:
        expected = (2, "macos", (13, 0), ["@executable_path/../Frameworks"], True, True)
        found = (image.kind, image.platform, image.minimum, image.rpaths, image.signed, image.position_independent)
        faults += differences(image.processor, expected, found)
        # Nothing of the machine it was built on, and Sparkle only at run time.
        faults += differences(f"libraries of {image.processor}", sorted(SYSTEM_LIBRARIES | TOOLKIT), sorted(image.libraries))
        faults += [f"{image.processor}: nobody has {name}" for name, library in image.undefined if library is None]
    return faults


def check_sparkle(bundle, original):
    """The framework that packaging brings along, with its links."""
    brought = bundle / "Contents/Frameworks/Sparkle.framework"
    listed = lambda folder: sorted((str(path.relative_to(folder)), path.is_symlink()) for path in folder.rglob("*"))
    if not brought.is_dir():
        return ["Sparkle is missing"]
    return differences("Sparkle", listed(original), listed(brought))
