#!/usr/bin/env python3
"""Draws the art of the about box into src/resources/art.

    draw.py             writes the files
    draw.py --check     lists committed files that differ from what it would draw; exits with 1 if there is one
    draw.py --sheet F   also writes a contact sheet to the PNG file F
"""

import argparse
import os
import sys
from collections import Counter

import bitmaps
import emblem
import frame
import icons
import palette
import raster
import scene
import sheet
import sprites
import walker

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
TARGET = os.path.join(ROOT, "src", "resources", "art")


def _bitmap_files():
    """Returns {file name: bytes} of all bitmaps. They are created together because they share one palette."""
    drawn = {"frame.bmp": frame.frame()}
    drawn.update({"picture%d.bmp" % phase: scene.picture(phase) for phase in range(scene.FRAMES)})
    mixed = Counter()
    soft = {}
    for name, canvas in drawn.items():
        soft[name] = [_soften(block) for row in canvas.blocks() for block in row]
        mixed.update(pixel for pixel in soft[name] if isinstance(pixel, tuple))
    entries, places = palette.share_palette(mixed)
    known = {colour: palette.nearest(colour, entries) for colour in mixed}
    files = {}
    for name, canvas in drawn.items():
        indexes = bytes(known[pixel] if isinstance(pixel, tuple) else places[pixel] for pixel in soft[name])
        files[name] = bitmaps.encode(canvas.width, canvas.height, indexes, entries)
        if bitmaps.decode(files[name]) != (canvas.width, canvas.height, indexes, entries):
            raise SystemExit(name + " does not read back as it was drawn")
    return files


def _soften(block):
    """The paint (an index) if all samples of a pixel are the same, otherwise their average colour (a tuple)."""
    first = block[0]
    if block.count(first) == len(block):
        return first
    return raster.average(block, palette.PAINTS)


def _icon_files():
    images = {"about.ico": emblem.emblem()}
    images.update({"flyer%d.ico" % i: [rows] for i, rows in enumerate(sprites.flyers())})
    images.update({"walker%02d.ico" % i: [rows] for i, rows in enumerate(walker.walkers())})
    files = {}
    for name, pictures in images.items():
        files[name] = icons.encode(pictures)
        if icons.decode(files[name]) != pictures:
            raise SystemExit(name + " does not read back as it was drawn")
    return files


def _differing(files):
    """Names of files that are missing or out of date, or that this program does not draw."""
    stale = set(os.listdir(TARGET)) - set(files) if os.path.isdir(TARGET) else set()
    for name, data in files.items():
        path = os.path.join(TARGET, name)
        if not os.path.isfile(path):
            stale.add(name)
            continue
        with open(path, "rb") as file:
            if file.read() != data:
                stale.add(name)
    return sorted(stale)


def main():
    parser = argparse.ArgumentParser(description="Draws the art of the about box.")
    parser.add_argument("--check", action="store_true", help="compare with the committed files, write nothing")
    parser.add_argument("--sheet", metavar="FILE", help="also write a PNG contact sheet")
    options = parser.parse_args()
    files = {**_bitmap_files(), **_icon_files()}
    if options.sheet:
        with open(options.sheet, "wb") as file:
            file.write(sheet.contact_sheet(files))
    if options.check:
        stale = _differing(files)
        for name in stale:
            print("differs from what tools/art draws: src/resources/art/" + name)
        return 1 if stale else 0
    os.makedirs(TARGET, exist_ok=True)
    for name, data in files.items():
        with open(os.path.join(TARGET, name), "wb") as file:
            file.write(data)
    print("%d files, %d bytes" % (len(files), sum(map(len, files.values()))))
    return 0


if __name__ == "__main__":
    sys.exit(main())
