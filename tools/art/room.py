"""The machine room itself: walls, a window with an evening view, the raised floor, the clock and the zone chart."""

import math

from palette import BLACK, WHITE, shade, tone
from raster import circle
from solid import Face

_GRILLES = {(3, 6), (3, 1), (1, 0), (4, 10)}


def floor(canvas, view):
    ground = Face(canvas, view, (0, 0, 0), (1, 0, 0), (0, 1, 0))
    canvas.rect(0, 0, canvas.width, canvas.height, tone("floor", 0.4))
    for row in range(0, 9):
        for column in range(-1, 15):
            lightness = 0.52 - 0.028 * row + (0.05 if (row + column) % 2 else 0.0)
            u, v = column * 36, row * 40
            ground.rect(u, v, 36, 40, tone("floor", lightness - 0.2))
            ground.rect(u, v, 35, 39, tone("floor", lightness + 0.18))
            ground.rect(u + 1, v + 1, 34, 38, tone("floor", lightness))
            if (row, column) in _GRILLES:
                _grille(ground, u, v, lightness)


def _grille(ground, u, v, lightness):
    """A perforated floor tile for the cooling air."""
    for slot in range(4):
        ground.rect(u + 6, v + 6 + slot * 8, 24, 4, tone("floor", lightness - 0.34))


def walls(canvas, view):
    back = Face(canvas, view, (0, 0, 0), (1, 0, 0), (0, 0, 1))
    left = Face(canvas, view, (0, 0, 0), (0, 1, 0), (0, 0, 1))
    left.rect(0, 0, 260, 200, tone("wall", 0.22))
    for i in range(3):
        left.rect(0, 0, 70 - i * 22, 200, tone("wall", 0.2 - i * 0.07))
    back.rect(0, 0, 420, 200, tone("wall", 0.44))
    back.rect(0, 0, 420, 30, tone("wall", 0.33))
    back.rect(0, 30, 420, 1.6, tone("wall", 0.66))
    back.rect(0, 0, 420, 5, tone("wall", 0.12))
    back.rect(0, 5, 420, 1, tone("wall", 0.55))
    left.rect(0, 0, 260, 5, tone("wall", 0.06))
    left.rect(0, 5, 260, 1, tone("wall", 0.3))
    _tray(back)


def _tray(back):
    """The cable tray along the wall under the ceiling."""
    for i, paint in enumerate([tone("gold", 0.55), tone("blue", 0.55), tone("red", 0.5)]):
        back.rect(250, 99 + i * 2.6, 170, 1.8, paint)
    back.rect(250, 94, 170, 4, tone("steel", 0.5))
    back.rect(250, 97, 170, 1.2, tone("steel", 0.8))


def window(canvas, view, phase):
    """The city at nightfall behind a four-paned window; a mast on a roof blinks."""
    pane = Face(canvas, view, (96, 0, 44), (1, 0, 0), (0, 0, 1))
    width, height = 128, 66
    pane.raised(-5, -5, width + 10, height + 10, 2, tone("wall", 1.0), tone("wall", 0.75), tone("wall", 0.12))
    bands = 14
    for i in range(bands):
        pane.rect(0, height * i / bands, width, height / bands + 0.3, tone("dusk", 1.0 - i / (bands - 1)))
    pane.ellipse(93, 41, 7.6, 7.6, tone("gold", 0.95))
    pane.ellipse(90.2, 42.6, 6.6, 6.6, tone("dusk", 0.31))
    for u, v in [(12, 48), (34, 44), (76, 46), (114, 50), (118, 40), (22, 40), (106, 44)]:
        pane.rect(u, v, 1.2, 1.2, WHITE)
    for u, v, span in [(6, 30, 34), (40, 24, 30), (66, 33, 46), (104, 26, 22)]:
        pane.fill(circle(u + span / 2, v, span / 2, 1.6), tone("dusk", 0.84))
    _skyline(pane, width)
    if phase in (0, 1):
        pane.ellipse(54.5, 37, 1.8, 1.8, tone("red", 0.75))
    pane.rect(width / 2 - 1.5, 0, 3, height, tone("wall", 0.7))
    pane.rect(width / 2 + 0.8, 0, 0.8, height, tone("wall", 0.2))
    pane.rect(0, 33, width, 2.5, tone("wall", 0.7))
    pane.rect(0, 32.4, width, 0.8, tone("wall", 0.2))
    pane.fill([(8, 0), (30, 0), (64, 66), (42, 66)], shade(1))


def _skyline(pane, width):
    far = [(0, 15), (14, 21), (24, 13), (36, 18), (46, 12), (60, 22), (72, 16), (88, 20), (100, 12), (114, 17)]
    for (u, height), following in zip(far, far[1:] + [(width, 0)]):
        pane.rect(u, 0, following[0] - u, height, tone("dusk", 0.3))
    near = [(2, 11, 10), (13, 8, 16), (33, 10, 9), (50, 9, 25), (62, 14, 10), (80, 9, 15), (92, 15, 8), (110, 12, 13)]
    for u, span, height in near:
        pane.rect(u, 0, span, height, tone("dusk", 0.08))
        pane.rect(u, 0, 1.2, height, tone("dusk", 0.16))
        for light in range(int(span * height / 9)):
            at = (light * 7 + int(u)) % int(span - 2), (light * 5 + int(u) * 3) % int(height - 2)
            if (light + int(u)) % 3:
                pane.rect(u + 1 + at[0], 1 + at[1], 1.2, 1.4, tone("gold", 0.8))
    pane.rect(54, 25, 1, 12, tone("dusk", 0.08))


def clock(canvas, view, phase):
    """A wall clock whose second hand makes one turn per loop."""
    face = Face(canvas, view, (254, 0, 76), (1, 0, 0), (0, 0, 1))
    face.ellipse(1.2, -1.4, 12.5, 12.5, tone("wall", 0.2))
    face.ellipse(0, 0, 12, 12, tone("steel", 0.35))
    face.ellipse(-0.4, 0.5, 11, 11, tone("steel", 0.85))
    face.ellipse(0, 0, 9.6, 9.6, tone("beige", 1.0))
    for hour in range(12):
        angle = math.radians(hour * 30)
        out = 8.2
        face.ellipse(out * math.cos(angle), out * math.sin(angle), 0.7, 0.7, tone("steel", 0.3))
    face.line([(0, 0), (-3.6, -3.4)], 1.6, BLACK)
    face.line([(0, 0), (1.2, 7)], 1.2, BLACK)
    angle = math.radians(90 - phase * 90)
    face.line([(0, 0), (8 * math.cos(angle), 8 * math.sin(angle))], 0.8, tone("red", 0.6))
    face.ellipse(0, 0, 1.2, 1.2, tone("red", 0.4))


def chart(canvas, view):
    """A board with a drawing of three zones and their connections."""
    board = Face(canvas, view, (283, 0, 46), (1, 0, 0), (0, 0, 1))
    board.rect(2, -3, 66, 44, tone("wall", 0.22))
    board.raised(0, 0, 66, 42, 2.2, tone("wood", 0.9), tone("wood", 0.62), tone("wood", 0.25))
    board.rect(3.5, 3.5, 59, 35, tone("beige", 0.95))
    board.fill([(3.5, 38.5), (30, 38.5), (12, 3.5), (3.5, 3.5)], tone("beige", 1.0))
    joints = [(33, 29), (14, 15), (33, 13), (52, 15)]
    for end in joints[1:]:
        board.line([joints[0], end], 1.3, tone("steel", 0.3))
    for (u, v), ramp in zip(joints, ["blue", "red", "gold", "leaf"]):
        board.rect(u - 5, v - 4.5, 11, 9, tone("steel", 0.25))
        board.rect(u - 5.5, v - 4, 11, 9, tone(ramp, 0.55))
        board.rect(u - 5.5, v + 3.4, 11, 1.6, tone(ramp, 0.8))
    for u in (9, 28, 47):
        board.rect(u, 6.5, 10, 1.2, tone("steel", 0.6))
