"""How sprites become pixels, and the flying one: a diskette with wings, in four directions of flight.

A sprite's canvas holds numbers of the 16 icon colours. A pixel takes the colour of most of its samples, which keeps
edges hard, and whatever is drawn gets a black outline.
"""

import math

from icons import CLEAR
from raster import Canvas

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

    def beside(x, y):
        return solid(x - 1, y) or solid(x + 1, y) or solid(x, y - 1) or solid(x, y + 1)

    return [[BLACK if rows[y][x] == CLEAR and beside(x, y) else rows[y][x] for x in range(size)] for y in range(size)]


def mirrored(rows):
    return [row[::-1] for row in rows]


class _Turned:
    """Draws on a canvas in coordinates around a place, turned by some degrees."""

    def __init__(self, canvas, x, y, degrees):
        self.canvas = canvas
        self.x = x
        self.y = y
        self.cosine = math.cos(math.radians(degrees))
        self.sine = math.sin(math.radians(degrees))

    def at(self, x, y):
        return self.x + x * self.cosine - y * self.sine, self.y + x * self.sine + y * self.cosine

    def fill(self, points, paint):
        self.canvas.fill([self.at(x, y) for x, y in points], paint)

    def rect(self, x, y, width, height, paint):
        self.fill([(x, y), (x + width, y), (x + width, y + height), (x, y + height)], paint)


def _diskette(canvas, x, y, degrees, look):
    """The body: shutter on top, label below, and between them the eyes, whose pupils are off by `look`."""
    body = _Turned(canvas, x, y, degrees)
    body.fill([(-7, -7), (5.6, -7), (7, -5.6), (7, 7), (-7, 7)], BLUE)
    body.rect(5.4, -5, 1.6, 12, NAVY)
    body.rect(-7, 5.6, 14, 1.4, NAVY)
    body.rect(-7, -7, 1.2, 12.6, AQUA)
    body.rect(-4, -7, 8.4, 4, SILVER)
    body.rect(-4, -7, 8.4, 1.1, WHITE)
    body.rect(1.2, -6.2, 2, 2.6, NAVY)
    body.rect(-4.8, 2.6, 9.6, 4.4, WHITE)
    body.rect(-3.4, 4.2, 6.6, 1.1, RED)
    for side in (-2.7, 2.7):
        left, top = body.at(side, -0.7)
        canvas.ellipse(left, top, 2.4, 2.6, WHITE)
        canvas.ellipse(left + look[0], top + look[1], 1.2, 1.3, BLACK)


def _wing(canvas, x, y, tips, far):
    """A wing that grows from (x, y): one feather to each tip, the longest first."""
    shade, edge = (GRAY, SILVER) if far else (SILVER, WHITE)
    for i, (tip_x, tip_y) in enumerate(tips):
        span = math.hypot(tip_x - x, tip_y - y)
        nx, ny = (tip_y - y) / span, (x - tip_x) / span
        wide = 2.9 - i * 0.2
        middle = x + (tip_x - x) * 0.55, y + (tip_y - y) * 0.55
        canvas.fill([(x, y), (middle[0] + nx * wide, middle[1] + ny * wide), (tip_x, tip_y),
                     (middle[0] - nx * wide, middle[1] - ny * wide)], edge if i % 2 == 0 else shade)
    canvas.ellipse(x, y, 2.6, 2.4, edge)


def _sideways():
    """Flight to the right: the body leans forward, the wings are swept back."""
    canvas = blank()
    _wing(canvas, 18, 12, [(12, 1.4), (8.6, 4), (7, 7.4)], True)
    _diskette(canvas, 20, 18.4, 12, (0.9, 0.2))
    _wing(canvas, 17, 18, [(2, 6), (1.2, 10.6), (2, 15), (5, 18.6)], False)
    return pixels(canvas)


def _climbing():
    canvas = blank()
    for side in (-1, 1):
        _wing(canvas, 16 + side * 7, 14, [(16 + side * 14.6, 22), (16 + side * 12.6, 25.6), (16 + side * 9.6, 28)],
              False)
    _diskette(canvas, 16, 13.4, 0, (0, -1.1))
    return pixels(canvas)


def _diving():
    canvas = blank()
    for side in (-1, 1):
        _wing(canvas, 16 + side * 6.6, 17, [(16 + side * 14.4, 3), (16 + side * 11, 1.6), (16 + side * 7.4, 2.4)],
              False)
    _diskette(canvas, 16, 20.4, 0, (0, 1.2))
    return pixels(canvas)


def flyers():
    """Directions 0 to 3: to the left, climbing, to the right, diving."""
    right = _sideways()
    return [mirrored(right), _climbing(), right, _diving()]
