#!/usr/bin/env python3
"""Draws the two sample desktops behind the preview of the HUD.

Writes PreviewLight.png and PreviewDark.png into the given directory (the program's resource bundle by default):
hills in the morning and at dusk, 960 x 600 pixels, that is 480 x 300 points at twice the density. Standard library
only, and the same bytes on every run with one version of zlib.
"""

import math
import pathlib
import struct
import sys
import zlib

WIDTH, HEIGHT = 960, 600


def mix(a, b, t):
    t = min(1.0, max(0.0, t))
    return tuple(x + (y - x) * t for x, y in zip(a, b))


def smooth(edge0, edge1, x):
    t = min(1.0, max(0.0, (x - edge0) / (edge1 - edge0)))
    return t * t * (3 - 2 * t)


def gradient(stops, t):
    for (at, colour), (next_at, next_colour) in zip(stops, stops[1:]):
        if t <= next_at:
            return mix(colour, next_colour, (t - at) / (next_at - at))
    return stops[-1][1]


def ridge(x, seed, rough):
    """A rolling line between about -1 and 1 at x (0 to 1)."""
    total, size = 0.0, 1.0
    for octave in range(5):
        frequency = 1.35 * 2 ** octave
        total += size * math.sin(2 * math.pi * (x * frequency + seed * (octave + 1) * 0.371)
                                 + 0.8 * math.sin(2 * math.pi * (x * frequency * 0.5 + seed)))
        size *= rough
    return total / 1.6


def hexed(code):
    return tuple(int(code[i:i + 2], 16) for i in (0, 2, 4))


LIGHT = {
    "sky": [(0.0, hexed("6fb1ee")), (0.32, hexed("a9d3f6")), (0.55, hexed("fde7d0")), (0.72, hexed("ffd9b8"))],
    "disc": (0.70, 0.36, 0.040, hexed("fffaf0")),
    "glow": (hexed("fff3dc"), 0.85, 0.30),
    "stars": 0,
    # base height, swing, seed, roughness, colour at the crest, colour of the haze at its foot
    "hills": [
        (0.50, 0.050, 0.13, 0.46, hexed("b5c9e6"), hexed("e9dfe0")),
        (0.57, 0.055, 0.57, 0.42, hexed("8fb0d8"), hexed("cfd6e2")),
        (0.66, 0.060, 0.91, 0.36, hexed("6a9cc0"), hexed("a9cbcf")),
        (0.77, 0.060, 0.29, 0.30, hexed("4c8f9c"), hexed("7fbcae")),
        (0.88, 0.050, 0.71, 0.26, hexed("2f7a78"), hexed("4fa08c")),
    ],
}

DARK = {
    "sky": [(0.0, hexed("141a3c")), (0.28, hexed("2c2c66")), (0.46, hexed("6a4389")), (0.60, hexed("c7678d")),
            (0.72, hexed("f2a07e"))],
    "disc": (0.30, 0.27, 0.026, hexed("fdf3e2")),
    "glow": (hexed("c9b6ff"), 0.34, 0.20),
    "stars": 90,
    "hills": [
        (0.52, 0.050, 0.23, 0.46, hexed("7a4a86"), hexed("b8668f")),
        (0.59, 0.055, 0.67, 0.42, hexed("57397a"), hexed("86508a")),
        (0.68, 0.060, 0.41, 0.36, hexed("3c2c66"), hexed("5b3d7c")),
        (0.78, 0.060, 0.83, 0.30, hexed("272150"), hexed("3b2f66")),
        (0.89, 0.050, 0.07, 0.26, hexed("17163a"), hexed("25224e")),
    ],
}


def stars(count):
    """Small lights in the upper sky: (x, y, radius, strength), in pixels."""
    state, found = 20240229, []
    for _ in range(count):
        numbers = []
        for _ in range(4):
            state = (state * 1103515245 + 12345) % 2 ** 31
            numbers.append(state / 2 ** 31)
        found.append((numbers[0] * WIDTH, numbers[1] ** 1.3 * HEIGHT * 0.46, 0.7 + numbers[2] * 0.8,
                      0.25 + 0.65 * numbers[3]))
    return found


def draw(scene):
    disc_x, disc_y, disc_radius, disc_colour = scene["disc"]
    glow_colour, glow_strength, glow_reach = scene["glow"]
    aspect = WIDTH / HEIGHT
    crests = [[base + swing * ridge(x / WIDTH * 1.1, seed, rough) for x in range(WIDTH)]
              for base, swing, seed, rough, _, _ in scene["hills"]]
    rows = []
    for y in range(HEIGHT):
        v = y / HEIGHT
        sky = gradient(scene["sky"], v)
        row = []
        for x in range(WIDTH):
            distance = math.hypot((x / WIDTH - disc_x) * aspect, v - disc_y)
            colour = mix(sky, glow_colour, glow_strength * math.exp(-(distance / glow_reach) ** 2))
            colour = mix(colour, disc_colour, 1 - smooth(disc_radius - 0.002, disc_radius + 0.002, distance))
            for (base, swing, _, _, top, foot), crest in zip(scene["hills"], crests):
                cover = smooth(-0.0014, 0.0014, v - crest[x])
                if cover > 0:
                    colour = mix(colour, mix(top, foot, (v - crest[x]) / 0.2), cover)
            row.append(colour)
        rows.append(row)
    for star_x, star_y, radius, strength in stars(scene["stars"]):
        for y in range(int(star_y) - 2, int(star_y) + 4):
            for x in range(int(star_x) - 2, int(star_x) + 4):
                if 0 <= x < WIDTH and 0 <= y < HEIGHT:
                    light = strength * max(0.0, 1 - math.hypot(x - star_x, y - star_y) / (radius + 0.6))
                    rows[y][x] = mix(rows[y][x], (255, 250, 240), light)
    return rows


def png(rows):
    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))

    def filtered(line, above):
        candidates = []
        for kind in (1, 2, 4):
            out = bytearray([kind])
            for i, value in enumerate(line):
                left = line[i - 3] if i >= 3 else 0
                up = above[i]
                corner = above[i - 3] if i >= 3 else 0
                if kind == 1:
                    guess = left
                elif kind == 2:
                    guess = up
                else:
                    p = left + up - corner
                    guess = min((left, up, corner), key=lambda c: abs(p - c))
                out.append((value - guess) % 256)
            candidates.append((sum(min(b, 256 - b) for b in out[1:]), bytes(out)))
        return min(candidates)[1]

    data, above = bytearray(), bytes(WIDTH * 3)
    for row in rows:
        line = bytes(min(255, max(0, round(part))) for pixel in row for part in pixel)
        data += filtered(line, above)
        above = line
    header = struct.pack(">IIBBBBB", WIDTH, HEIGHT, 8, 2, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(bytes(data), 9))
            + chunk(b"IEND", b""))


def main():
    here = pathlib.Path(__file__).resolve().parent
    bundle = here.parent / "src" / "resources" / "Orvantile_Orvantile.bundle"
    target = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else bundle
    for name, scene in (("PreviewLight", LIGHT), ("PreviewDark", DARK)):
        (target / f"{name}.png").write_bytes(png(draw(scene)))


if __name__ == "__main__":
    main()
