#!/usr/bin/python3
"""Makes OrvantileRounded-SemiBold.ttf: Nunito SemiBold with key symbols drawn in its weight.

Usage: make_fonts.py [OUTPUT]. Needs Debian's python3-fonttools and python3-brotli, and npm, which fetches the
letters (package @fontsource/nunito: one file for each group of scripts). The result is a modified version of
Nunito under the SIL Open Font License (OFL.txt), hence its own name.
"""

import pathlib
import subprocess
import sys
import tarfile
import tempfile

from fontTools import merge
from fontTools.pens.cu2quPen import Cu2QuPen
from fontTools.pens.boundsPen import BoundsPen
from fontTools.pens.transformPen import TransformPen
from fontTools.pens.ttGlyphPen import TTGlyphPen
from fontTools.ttLib import TTFont
from fontTools.ttLib.tables import otTables

from symbol_shapes import MIDDLE, SYMBOLS, Brush

PACKAGE = "@fontsource/nunito@5.3.0"
SCRIPTS = ("latin", "latin-ext", "vietnamese", "cyrillic", "cyrillic-ext")
FAMILY, STYLE = "Orvantile Rounded", "SemiBold"

# The height of a line is 1.2 times the font size, with the capitals in its middle.
ASCENT, DESCENT = 952, -248


def letters(folder):
    """Nunito SemiBold with all its scripts as one font."""
    subprocess.run(["npm", "pack", "--silent", PACKAGE], cwd=folder, check=True, stdout=subprocess.DEVNULL)
    with tarfile.open(next(folder.glob("*.tgz"))) as package:
        package.extractall(folder)
    parts = []
    for script in SCRIPTS:
        part = TTFont(folder / f"package/files/nunito-{script}-600-normal.woff2")
        part.flavor = None
        for table in ("STAT", "prep", "gasp"):
            if table in part:
                del part[table]
        path = folder / f"{script}.ttf"
        part.save(path)
        parts.append(str(path))
    return merge.Merger().merge(parts)


def add_glyph(font, name, draw, character=None):
    pen = TTGlyphPen(None)
    width = draw(Cu2QuPen(pen, max_err=0.6, reverse_direction=False))
    glyph = pen.glyph()
    font["glyf"][name] = glyph
    glyph.recalcBounds(font["glyf"])
    font["hmtx"][name] = (width, getattr(glyph, "xMin", 0))
    if name not in font.getGlyphOrder():
        font.setGlyphOrder(font.getGlyphOrder() + [name])
    if character is not None:
        for table in font["cmap"].tables:
            if table.isUnicode():
                table.cmap[ord(character)] = name
    return glyph


def mark_overlaps(glyph):
    """Tells the rasteriser that contours overlap."""
    if glyph.numberOfContours > 0:
        glyph.flags[0] |= 0x40


def add_symbols(font):
    for character, shape in SYMBOLS.items():
        glyph = add_glyph(font, f"uni{ord(character):04X}", lambda pen, s=shape: s(Brush(pen)), character)
        mark_overlaps(glyph)


def add_help_key(font):
    """A question mark with an enclosing circle becomes one well-proportioned glyph."""
    glyphs = font.getGlyphSet()
    question = font.getBestCmap()[ord("?")]
    bounds = BoundsPen(glyphs)
    glyphs[question].draw(bounds)
    left, low, right, high = bounds.bounds
    radius, width, scale = 370, 2 * (370 + 46 + 52), 0.66
    middle = width / 2

    def draw(pen):
        Brush(pen, 84).circle((middle, MIDDLE), radius)
        shift = (middle - scale * (left + right) / 2, MIDDLE - scale * (low + high) / 2)
        glyphs[question].draw(TransformPen(pen, (scale, 0, 0, scale, *shift)))
        return width

    name = "question_uni20DD"
    add_glyph(font, name, draw)
    ligature = otTables.Ligature()
    ligature.LigGlyph, ligature.Component, ligature.CompCount = name, ["uni20DD"], 2
    table = otTables.LigatureSubst()
    table.Format, table.ligatures = 1, {question: [ligature]}
    lookup = otTables.Lookup()
    lookup.LookupType, lookup.LookupFlag, lookup.SubTable, lookup.SubTableCount = 4, 0, [table], 1
    substitutions = font["GSUB"].table
    substitutions.LookupList.Lookup.append(lookup)
    index = len(substitutions.LookupList.Lookup) - 1
    compositions = [r for r in substitutions.FeatureList.FeatureRecord if r.FeatureTag == "ccmp"]
    if not compositions:
        sys.exit("the letters have no composition feature to extend")
    for record in compositions:
        record.Feature.LookupListIndex.append(index)


def name_it(font):
    table = font["name"]
    copyright_ = "Copyright 2014 The Nunito Project Authors (https://github.com/googlefonts/nunito); " + (
        "key symbols copyright 2026 the Orvantile authors"
    )
    table.names = []
    postscript = FAMILY.replace(" ", "") + "-" + STYLE
    for number, text in {
        0: copyright_, 1: f"{FAMILY} {STYLE}", 2: "Regular", 3: f"1.000;{postscript}", 4: f"{FAMILY} {STYLE}",
        5: "Version 1.000", 6: postscript, 16: FAMILY, 17: STYLE,
        13: "This Font Software is licensed under the SIL Open Font License, Version 1.1.",
        14: "https://openfontlicense.org",
    }.items():  # fmt: skip
        table.setName(text, number, 3, 1, 0x409)


def set_metrics(font):
    lines, windows = font["hhea"], font["OS/2"]
    lines.ascent = windows.sTypoAscender = ASCENT
    lines.descent = windows.sTypoDescender = DESCENT
    lines.lineGap = windows.sTypoLineGap = 0
    windows.usWeightClass = 600
    windows.fsSelection |= 1 << 7  # the typographic metrics count


def main():
    output = sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).with_name("OrvantileRounded-SemiBold.ttf")
    with tempfile.TemporaryDirectory() as folder:
        font = letters(pathlib.Path(folder))
        add_symbols(font)
        add_help_key(font)
        name_it(font)
        set_metrics(font)
        font["head"].created = font["head"].modified = 3849984000  # the same file at every run
        font.recalcTimestamp = False
        font.save(output)


main()
