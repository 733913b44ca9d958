"""The frame around everything, 411 x 411: a metal casing, the band with the product's name, the credits' background."""

import lettering
from palette import BLACK, TEXT_TEAL, WHITE, shade, tint, tone
from raster import Canvas, curve, vertical

SIZE = 411
BORDER = 14
BAND_TOP, BAND_BOTTOM = 194, 245

_GLOW = tint((255, 236, 150), 40)


def frame():
    canvas = Canvas(SIZE, SIZE)
    inner = SIZE - 2 * BORDER
    canvas.rect(BORDER, BORDER, inner, BAND_TOP - BORDER, tone("wall", 0.1))
    canvas.rect(BORDER, BAND_BOTTOM, inner, SIZE - BORDER - BAND_BOTTOM, TEXT_TEAL)
    _band(canvas)
    _casing(canvas)
    return canvas


def _casing(canvas):
    _plate(canvas, 0, 1, BLACK, BLACK)
    _plate(canvas, 1, 2, tone("steel", 0.95), tone("steel", 0.16))
    _plate(canvas, 3, 1, tone("steel", 0.78), tone("steel", 0.32))
    _plate(canvas, 4, 6, tone("steel", 0.58), tone("steel", 0.58))
    _plate(canvas, 10, 1, tone("steel", 0.46), tone("steel", 0.66))
    _plate(canvas, 11, 2, tone("steel", 0.16), tone("steel", 0.92))
    _plate(canvas, 13, 1, BLACK, BLACK)
    far = SIZE - 7.5
    for i, (x, y) in enumerate([(7.5, 7.5), (far, 7.5), (7.5, far), (far, far)]):
        _screw(canvas, x, y, i)
    for side in (1.5, 0.5):
        paint = tone("steel", 0.86 if side > 1 else 0.14)
        for i in range(15):
            canvas.rect(SIZE / 2 - 52 + i * 7.2 + side - 0.5, SIZE - 9.5 + side, 3, 4, paint)
    for y in (BAND_TOP - 2, BAND_BOTTOM + 2):
        for x in (3, SIZE - BORDER + 3):
            canvas.rect(x, y, 8, 1, tone("steel", 0.25))
            canvas.rect(x, y + 1, 8, 1, tone("steel", 0.85))
    for i, ramp in enumerate(["green", "gold", "red"]):
        x = SIZE - 56 + i * 11
        canvas.ellipse(x + 0.3, SIZE - 7.2, 2.8, 2.8, tone("steel", 0.9))
        canvas.ellipse(x, SIZE - 7.5, 2.6, 2.6, tone("steel", 0.05))
        canvas.ellipse(x, SIZE - 7.5, 1.9, 1.9, tone(ramp, 0.66))
        canvas.ellipse(x - 0.5, SIZE - 8.1, 0.8, 0.8, WHITE)


def _plate(canvas, inset, width, upper, lower):
    """One ring of the casing: `upper` on its top and left, `lower` on its bottom and right."""
    near, far = inset, SIZE - inset
    step = width
    canvas.fill([(near, near), (far, near), (far - step, near + step), (near + step, near + step),
                 (near + step, far - step), (near, far)], upper)
    canvas.fill([(far, far), (near, far), (near + step, far - step), (far - step, far - step),
                 (far - step, near + step), (far, near)], lower)


def _screw(canvas, x, y, turn):
    canvas.ellipse(x + 0.5, y + 0.5, 4.6, 4.6, tone("steel", 0.9))
    canvas.ellipse(x, y, 4.5, 4.5, tone("steel", 0.1))
    canvas.ellipse(x, y, 3.7, 3.7, tone("steel", 0.5))
    canvas.ellipse(x - 0.4, y - 0.4, 2.9, 2.9, tone("steel", 0.82))
    dx, dy = [(2.6, 1.6), (1.2, -2.8), (-2.8, 1.0), (2.2, -2.2)][turn]
    canvas.stroke([(x - dx, y - dy), (x + dx, y + dy)], 1.1, tone("steel", 0.08))


def _band(canvas):
    left, right = BORDER, SIZE - BORDER
    wide = right - left
    canvas.rect(left, BAND_TOP, wide, BAND_BOTTOM - BAND_TOP, tone("wall", 0.1))
    field = [tone("wall", part) for part in (0.45, 0.33, 0.22, 0.11, 0.0)]
    canvas.rect(left, BAND_TOP + 4, wide, 43, vertical(field, BAND_TOP + 4, BAND_BOTTOM - 4))
    for y in (BAND_TOP, BAND_BOTTOM - 4):
        canvas.rect(left, y, wide, 4, tone("steel", 0.58))
        canvas.rect(left, y, wide, 1, tone("steel", 0.95))
        canvas.rect(left, y + 3, wide, 1, tone("steel", 0.12))
    middle = (BAND_TOP + BAND_BOTTOM) / 2
    height = 26
    span = lettering.width("Tamrix32", height)
    start = (SIZE - span) / 2 - 1
    _cables(canvas, left, start - 10, middle, -1)
    _cables(canvas, right, start + span + 10, middle, 1)
    _name(canvas, start, middle - height / 2 - 1, height)


def _name(canvas, left, top, height):
    word = lettering.lines("Tamrix32", left, top, height)

    def pen(dx, dy, width, paint):
        for line in word:
            canvas.stroke([(x + dx, y + dy) for x, y in line], width, paint)

    pen(3.6, 4.2, 8.6, tone("wall", 0.0))
    for depth in range(6, 0, -1):
        pen(depth * 0.45, depth * 0.5, 8.0, tone("gold", 0.0 if depth > 1 else 0.12))
    pen(0, 0, 8.0, tone("gold", 0.12))
    pen(-0.3, -0.4, 6.6, tone("gold", 0.92))
    pen(0.3, 0.4, 6.2, tone("gold", 0.36))
    face = [tone("gold", part) for part in (1.0, 0.92, 0.82, 0.73, 0.64, 0.55, 0.82, 0.73, 0.64, 0.55, 0.46)]
    pen(0, 0, 5.0, vertical(face, top - 2, top + height + 3))


def _cables(canvas, outer, inner, y, side):
    """Three cables from the casing's edge that join in one plug next to the name, with packets on their way."""
    joint = inner + side * 18
    for rise, ramp in ((-12, "red"), (12, "blue"), (0, "leaf")):
        reach = outer - joint
        line = curve([(joint, y), (joint + reach * 0.3, y + rise * 0.3), (joint + reach * 0.55, y + rise),
                      (outer, y + rise)])
        canvas.stroke([(a + 1, b + 2) for a, b in line], 3.4, tone("wall", 0.0))
        canvas.stroke(line, 3.6, tone(ramp, 0.25))
        canvas.stroke([(a, b - 0.3) for a, b in line], 2.2, tone(ramp, 0.56))
        canvas.stroke([(a, b - 0.9) for a, b in line], 0.8, tone(ramp, 0.85))
        bead = line[{-12: 28, 0: 22, 12: 33}[rise]]
        canvas.ellipse(bead[0], bead[1], 5.4, 5, _GLOW)
        canvas.ellipse(bead[0], bead[1] - 0.3, 2.7, 2.6, tone("gold", 0.9))
        canvas.ellipse(bead[0] - 0.5, bead[1] - 0.8, 1.3, 1.2, WHITE)
    _plug(canvas, inner, y, side)


def _plug(canvas, x, y, side):
    def rect(start, top, length, height, paint):
        canvas.rect(min(x + side * start, x + side * (start + length)), y + top, length, height, paint)

    canvas.rect(min(x + side * 2, x + side * 21) + 1, y - 7, 19, 17, shade(-2))
    for top in (-4.4, 2.4):
        rect(-1, top, 7, 2.2, tone("steel", 0.3))
        rect(-1, top, 7, 1.2, tone("steel", 0.95))
    rect(4, -8, 13, 16, tone("steel", 0.04))
    rect(5, -7, 11, 14, tone("beige", 0.5))
    rect(5, -7, 11, 10, tone("beige", 0.78))
    rect(5, -7, 11, 2, tone("beige", 1.0))
    for i in range(3):
        rect(7 + i * 3, -4, 1.2, 8, tone("beige", 0.36))
    rect(17, -4.5, 5, 9, tone("steel", 0.06))
    rect(17, -3.5, 4, 7, tone("beige", 0.4))
    rect(17, -3.5, 4, 2, tone("beige", 0.7))
