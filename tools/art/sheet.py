"""A contact sheet: the frame as displayed, every picture, and the enlarged sprites."""

import struct
import zlib

import bitmaps
import icons
from palette import VGA

_GROUND = (0, 128, 128)


class _Sheet:
    def __init__(self, width, height, colour):
        self.width = width
        self.rows = [bytearray(bytes(colour) * width) for _ in range(height)]

    def dot(self, x, y, scale, colour):
        for row in self.rows[y:y + scale]:
            row[x * 3:(x + scale) * 3] = bytes(colour) * scale

    def bitmap(self, data, x, y):
        width, height, indexes, entries = bitmaps.decode(data)
        for i, index in enumerate(indexes):
            self.dot(x + i % width, y + i // width, 1, entries[index])
        return width, height

    def icon(self, rows, x, y, scale):
        for j, row in enumerate(rows):
            for i, pixel in enumerate(row):
                if pixel != icons.CLEAR:
                    self.dot(x + i * scale, y + j * scale, scale, VGA[pixel])

    def png(self):
        def chunk(kind, data):
            return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

        pixels = zlib.compress(b"".join(b"\0" + bytes(row) for row in self.rows), 9)
        header = struct.pack(">IIBBBBB", self.width, len(self.rows), 8, 2, 0, 0, 0)
        return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", pixels) + chunk(b"IEND", b"")


def _credits(page, left, top):
    """Bars at the positions of ten lines of credits, to show the text area."""
    x, width, y, height, growth, shift = 137, 137, 245, 1, 0, 0
    for k in range(10):
        for piece in range(3):
            bar = width // 4 + (k * 37 % 5) * width // 24
            for row in range(y, min(y + height, 397)):
                if piece == 1 and k % 4 != 3:
                    for i in range(bar):
                        page.dot(left + x + (width - bar) // 2 + i, top + row, 1, (255, 255, 255))
            x, width, y = x - 1, width + 2, y + height
        x, width, height, growth, shift = x + shift, width + growth, height + 1, growth + 6, shift - 3


def contact_sheet(files):
    """The PNG file's bytes."""
    page = _Sheet(1240, 1290, (72, 72, 80))
    page.bitmap(files["frame.bmp"], 10, 10)
    page.bitmap(files["picture1.bmp"], 24, 24)
    _credits(page, 10, 10)
    first = {name: icons.decode(data)[0] for name, data in files.items() if name.endswith(".ico")}
    for name, x, y in [("flyer2.ico", 130, 30), ("flyer0.ico", 250, 60), ("flyer3.ico", 330, 24),
                       ("walker04.ico", 90, 300), ("walker07.ico", 280, 270), ("walker15.ico", 220, 340)]:
        page.icon(first[name], 10 + x, 10 + y, 1)
    for i in range(4):
        page.bitmap(files["picture%d.bmp" % i], 440 + i % 2 * 393, 10 + i // 2 * 190)
    names = ["flyer%d.ico" % i for i in range(4)] + ["about.ico"]
    grid = [names] + [["walker%02d.ico" % (row * 6 + i) for i in range(6)] for row in range(3)]
    for row, line in enumerate(grid):
        for column, name in enumerate(line):
            x, y = 10 + column * 200, 440 + row * 210
            for j in range(192):
                page.rows[y + j][x * 3:(x + 192) * 3] = bytes(_GROUND) * 192
            page.icon(first[name], x, y, 6)
    page.icon(icons.decode(files["about.ico"])[1], 1010, 440, 6)
    return page.png()
