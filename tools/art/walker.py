"""The walking sprite: a desk mouse on two feet. It comes out of a hole, walks, or plays with the ball it rolls on."""

from raster import circle, curve
from sprites import (AQUA, BLACK, BLUE, GRAY, MAROON, OLIVE, PINK, RED, SILVER, WHITE, YELLOW, blank, mirrored,
                     pixels)
from icons import CLEAR

_GROUND = 28.5
# Where the near and the far foot stand beside the middle of the body, and how high they are lifted.
_TOGETHER = ((-3.4, 0), (3.2, 0))
_STRIDE = ((-6.2, 1.6), (4.6, 0))
_CROSS = ((2.6, 0), (-2.2, 1.8))


def _mouse(canvas, x=16.0, y=19.0, feet=_TOGETHER, eyes="ahead", tail=0.0, squash=0.0):
    """The mouse in side view, facing left, the middle of its body at (x, y)."""
    cable = curve([(x + 8, y + 2), (x + 12, y), (x + 12.6, y - 6 + tail), (x + 9.4, y - 10 + tail)])
    canvas.stroke(cable, 1.7, GRAY)
    canvas.rect(x + 6.6, y - 14 + tail, 4.6, 4, YELLOW)
    canvas.rect(x + 9.8, y - 14 + tail, 1.4, 4, OLIVE)
    canvas.rect(x + 7, y - 16 + tail, 1, 2, WHITE)
    canvas.rect(x + 9.6, y - 16 + tail, 1, 2, WHITE)
    for step, lift in reversed(feet):
        canvas.rect(x + step - 0.6, y + 4, 1.6, _GROUND - y - 6 - lift + 1, BLACK)
        canvas.ellipse(x + step - 1, _GROUND - 1.2 - lift, 3.4, 1.9, RED)
        canvas.rect(x + step - 4, _GROUND - 0.4 - lift, 6.2, 0.9, MAROON)
    height = 7.6 - squash
    top = y + squash
    canvas.ellipse(x, top, 10, height, GRAY)
    canvas.ellipse(x - 0.5, top - 1.1, 9.2, height - 1.3, SILVER)
    canvas.ellipse(x - 1.4, top - 2.8, 6.8, height - 3.6, WHITE)
    canvas.stroke(curve([(x - 1.2, top - height + 0.4), (x - 0.4, top - 2.6), (x - 3.4, top + 0.6),
                         (x - 9.4, top + 1.2)]), 1.0, GRAY)
    canvas.ellipse(x - 9.8, top + 0.4, 1.7, 1.5, PINK)
    _eyes(canvas, x - 5.4, top - 1.8, eyes)


def _eyes(canvas, x, y, look):
    places = [(x, y), (x + 5.4, y)] if look == "viewer" else [(x, y)]
    for left, top in places:
        if look == "happy":
            canvas.stroke([(left - 1.8, top + 1.2), (left, top - 1.4), (left + 1.8, top + 1.2)], 1.1, BLACK)
            continue
        canvas.ellipse(left, top, 2.5, 3, BLACK)
        canvas.ellipse(left, top, 1.8, 2.4, WHITE)
        shift = {"ahead": (-0.6, 0.4), "viewer": (0, 0.4), "up": (-0.3, -1), "down": (-0.6, 1)}[look]
        canvas.ellipse(left + shift[0], top + shift[1], 1.1, 1.3, BLUE if look == "viewer" else BLACK)


def _emerging(depth):
    """The mouse `depth` pixels down a hole in the ground."""
    canvas = blank()
    y, wide, high = 26.5, 13, 3.6
    canvas.ellipse(16, y, wide, high, GRAY)
    canvas.ellipse(16, y, wide - 1.4, high - 1, BLACK)
    _mouse(canvas, 16, 19 + depth, eyes="up" if depth > 12 else "ahead", tail=min(depth, 9) * 0.4)
    front = circle(16, y, wide - 1.4, high - 1, 0, 180, 16)
    canvas.fill([(32, y), *front, (0, y), (0, 32), (32, 32)], CLEAR)
    lip = circle(16, y, wide - 0.7, high - 0.5, 0, 180, 16)
    canvas.stroke(lip, 1.5, SILVER)
    return pixels(canvas)


def _standing(**pose):
    canvas = blank()
    _mouse(canvas, **pose)
    return pixels(canvas)


def _ball(canvas, x, y):
    canvas.ellipse(x, y, 3.2, 3.2, BLUE)
    canvas.ellipse(x - 0.8, y - 0.8, 1.8, 1.8, AQUA)
    canvas.rect(x - 1.8, y - 1.8, 1.2, 1.2, WHITE)


def _playing(ball, **pose):
    canvas = blank()
    _mouse(canvas, **pose)
    _ball(canvas, *ball)
    return pixels(canvas)


def _vanishing():
    """A puff of dust, the ball that is left, and stars."""
    canvas = blank()
    for x, y, radius in [(10, 23, 5), (21, 23, 5.4), (16, 18, 5.6), (16, 25, 5)]:
        canvas.ellipse(x, y, radius, radius * 0.9, SILVER)
    for x, y, radius in [(9.4, 22, 3.4), (20.4, 21.8, 3.8), (15.4, 16.8, 4)]:
        canvas.ellipse(x, y, radius, radius * 0.9, WHITE)
    for x, y in [(5, 9), (26, 8), (15, 5)]:
        canvas.fill([(x, y - 3), (x + 0.9, y - 0.9), (x + 3, y), (x + 0.9, y + 0.9), (x, y + 3), (x - 0.9, y + 0.9),
                     (x - 3, y), (x - 0.9, y - 0.9)], YELLOW)
    return pixels(canvas)


def _leftwards():
    return [_emerging(15), _emerging(9.5), _emerging(4.5), _standing(),
            _standing(feet=_STRIDE, y=18.2, tail=1.0), _standing(feet=_CROSS, y=18.6, tail=-0.6)]


def _play():
    return [
        _standing(eyes="viewer"),
        _playing((4.4, 25.2), y=19.6, eyes="down", squash=1.0, tail=1.4),
        _playing((4.2, 10), x=17, feet=((-7, 3.4), (2.6, 0)), eyes="up"),
        _playing((9, 4.4), x=17, y=15.4, feet=((-4.4, 4.6), (3.6, 4.0)), eyes="up", tail=2.0),
        _playing((8.2, 9), x=17, eyes="happy", tail=-0.4),
        _vanishing(),
    ]


def walkers():
    """The 18 frames, row by row: out and to the left, out and to the right, at play."""
    left = _leftwards()
    return left + [mirrored(rows) for rows in left] + _play()
