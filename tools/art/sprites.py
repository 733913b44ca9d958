"""Conversion of sprites to pixels, and the flying sprite: a diskette with wings, in four directions.

A sprite's canvas contains numbers of the 16 icon colours. A pixel gets the most frequent colour of its samples, so that
edges are sharp. The sprite gets a black outline.
"""

import math

from icons import CLEAR
from raster import Canvas, curve

BLACK, MAROON, GREEN, OLIVE, NAVY, PURPLE, TEAL, SILVER = range(8)
GRAY, RED, LIME, YELLOW, BLUE, PINK, AQUA, WHITE = range(8, 16)


def blank(size=32):
    return Canvas(size, size, CLEAR)


def pixels(canvas, outline=True):
    """The sprite's rows of colour numbers."""
    rows = [[max(set(block), key=lambda colour: (block.count(colour), colour)) for block in row]
            for row in canvas.blocks()]
    return _outlined(rows) if outline else rows


def _outlined(rows):
    size = len(rows)

    def solid(x, y):
        return 0 <= x < size and 0 <= y < size and rows[y][x] != CLEAR

    def touches_solid(x, y):
        return solid(x - 1, y) or solid(x + 1, y) or solid(x, y - 1) or solid(x, y + 1)

    return [[BLACK if rows[y][x] == CLEAR and touches_solid(x, y) else rows[y][x] for x in range(size)]
            for y in range(size)]


def mirrored(rows):
    return [row[::-1] for row in rows]


def _diskette(canvas, left, top, look):
    """The body, 16 x 16 pixels: shutter at the top, label at the bottom, eyes with pupils moved by `look`."""
    canvas.fill([(left, top), (left + 14, top), (left + 16, top + 2), (left + 16, top + 16), (left, top + 16)], BLUE)
    canvas.rect(left + 15, top + 2, 1, 14, NAVY)
    canvas.rect(left, top + 15, 16, 1, NAVY)
    canvas.rect(left, top, 1, 15, AQUA)
    canvas.rect(left + 4, top, 8, 3, SILVER)
    canvas.rect(left + 4, top, 8, 1, WHITE)
    canvas.rect(left + 9, top + 1, 2, 2, NAVY)
    canvas.rect(left + 3, top + 11, 10, 5, WHITE)
    canvas.rect(left + 4, top + 12, 8, 1, GRAY)
    canvas.rect(left + 4, top + 14, 5, 1, GRAY)
    for eye in (left + 2, left + 9):
        canvas.rect(eye, top + 4, 5, 6, NAVY)
        canvas.rect(eye + 1, top + 4, 3, 6, WHITE)
        canvas.rect(eye, top + 5, 5, 4, WHITE)
        canvas.rect(eye + 1 + look[0], top + 6 + look[1], 3, 3, BLACK)
        canvas.rect(eye + 1 + look[0], top + 6 + look[1], 1, 1, WHITE)


def _wing(canvas, x, y, tips, far=False):
    """A wing that begins at (x, y): one feather to each tip, each over the previous one."""
    for i, (tip_x, tip_y) in enumerate(tips):
        span = math.hypot(tip_x - x, tip_y - y)
        nx, ny = (tip_y - y) / span, (x - tip_x) / span
        middle = x + (tip_x - x) * 0.6, y + (tip_y - y) * 0.6
        for wide, paint in ((3.2, GRAY), (2.3, SILVER if far or i % 2 else WHITE)):
            canvas.fill(curve([(x, y), (middle[0] + nx * wide, middle[1] + ny * wide), (tip_x, tip_y)], 6)
                        + curve([(tip_x, tip_y), (middle[0] - nx * wide, middle[1] - ny * wide), (x, y)], 6), paint)
    canvas.ellipse(x, y, 2.6, 2.4, SILVER if far else WHITE)


def _sideways():
    """Flight to the right: the eyes look ahead, the wings are swept back."""
    canvas = blank()
    _wing(canvas, 18, 14, [(6, 8), (8, 4), (12, 1)], True)
    _diskette(canvas, 14, 13, (2, 0))
    _wing(canvas, 13.6, 21, [(3, 27), (1, 22), (1, 16), (4, 11)])
    return pixels(canvas)


def _climbing():
    canvas = blank()
    for side in (-1, 1):
        _wing(canvas, 16 + side * 7, 13, [(16 + side * 8.6, 29), (16 + side * 12, 27), (16 + side * 15, 22.6)])
    _diskette(canvas, 8, 4, (0, -2))
    return pixels(canvas)


def _diving():
    canvas = blank()
    for side in (-1, 1):
        _wing(canvas, 16 + side * 7, 19, [(16 + side * 7.6, 2), (16 + side * 11.4, 1.4), (16 + side * 15, 5)])
    _diskette(canvas, 8, 14, (0, 1))
    return pixels(canvas)


def flyers():
    """Directions 0 to 3: left, climbing, right, diving."""
    right = _sideways()
    return [mirrored(right), _climbing(), right, _diving()]
