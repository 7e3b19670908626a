#!/usr/bin/env python3
"""Makes Orvantile.icns from the icon that is drawn once for all systems. Needs rsvg-convert (Debian: librsvg2-bin).

An .icns file is a list of pictures: four letters that say the size, the length of the entry, and the picture as PNG.
On a Mac an icon keeps a margin of a tenth around itself, somewhat more than the drawing has."""
import pathlib
import struct
import subprocess

HERE = pathlib.Path(__file__).resolve().parent
DRAWING = HERE.parent / "icons" / "org.orvantile.Orvantile.svg"
# Points and pixels of each entry: plain sizes, then those for screens of two pixels per point.
ENTRIES = {"icp4": 16, "icp5": 32, "ic07": 128, "ic08": 256, "ic09": 512,
           "ic11": 32, "ic12": 64, "ic13": 256, "ic14": 512, "ic10": 1024}
MARGIN = 46 / 1024


def render(pixels):
    inner = round(pixels * (1 - 2 * MARGIN))
    edge = (pixels - inner) // 2
    command = ["rsvg-convert", f"--width={inner}", f"--height={inner}", f"--page-width={pixels}", f"--page-height={pixels}",
               f"--left={edge}", f"--top={edge}", DRAWING]
    return subprocess.run(command, check=True, capture_output=True).stdout


def main():
    pictures = {pixels: render(pixels) for pixels in sorted(set(ENTRIES.values()))}
    body = b"".join(kind.encode() + struct.pack(">I", len(pictures[pixels]) + 8) + pictures[pixels]
                    for kind, pixels in ENTRIES.items())
    (HERE / "Orvantile.icns").write_bytes(b"icns" + struct.pack(">I", len(body) + 8) + body)


if __name__ == "__main__":
    main()
