"""The walking sprite: a computer mouse on two feet. It comes out of a hole and walks, or plays with its ball."""

from icons import CLEAR
from raster import circle, curve
from sprites import (AQUA, BLACK, BLUE, GRAY, MAROON, NAVY, OLIVE, RED, SILVER, WHITE, YELLOW, blank, mirrored, pixels)

_GROUND = 30
# Offset of the far and the near foot from the middle of the body, and how high each is lifted.
_TOGETHER = ((3, 0), (-4, 0))
_STRIDE = ((6, 1), (-7, 0))
_CROSS = ((-3, 2), (2, 0))
_AIRBORNE = ((5, 4), (-5, 5))
_KICK = ((4, 0), (-11, 2))


def _mouse(canvas, x=16, base=25, feet=_TOGETHER, eyes="ahead", tail=0.0, height=12):
    """The mouse in side view, facing left: a dome with its flat underside at `base`, its middle at `x`."""
    _tail(canvas, x + 9, base - 3, tail)
    _foot(canvas, x, base, feet[:1])
    top = base - 1
    canvas.fill(circle(x, top, 11, height, 180, 360, 24), SILVER)
    canvas.fill(circle(x - 1, top - 1.6, 9, height - 3, 180, 360, 24), WHITE)
    canvas.fill(circle(x + 1.6, top, 8.4, height - 4.6, 180, 360, 24), SILVER)
    canvas.rect(x - 11, top - 2, 22, 3, GRAY)
    canvas.rect(x - 11, top - 2, 20, 1, SILVER)
    canvas.stroke(curve([(x + 1.5, top - height + 0.6), (x + 1.5, top - height * 0.5), (x - 0.5, top - 2)]), 1.0, GRAY)
    canvas.rect(x - 12, top - 3, 2, 2, RED)
    _foot(canvas, x, base, feet[1:])
    _eyes(canvas, x - 8, top - 8 + (12 - height) // 2, eyes)


def _foot(canvas, x, base, feet):
    for step, lift in feet:
        sole = _GROUND - lift
        canvas.rect(x + step, min(base, sole - 4), 2, 4, BLACK)
        canvas.rect(x + step - 2, sole - 3, 4, 3, BLUE)
        canvas.rect(x + step - 3, sole - 2, 5, 2, BLUE)
        canvas.rect(x + step - 3, sole - 1, 5, 1, NAVY)


def _tail(canvas, x, y, rise):
    """The cable, which ends in a raised plug."""
    canvas.stroke(curve([(x, y + 1), (x + 3.4, y - 2), (x + 3, y - 8 + rise), (x + 0.6, y - 11 + rise)]), 1.7, GRAY)
    left, top = x - 2, round(y - 16 + rise)
    canvas.rect(left, top, 5, 4, YELLOW)
    canvas.rect(left + 4, top, 1, 4, OLIVE)
    canvas.rect(left, top - 2, 1, 2, WHITE)
    canvas.rect(left + 3, top - 2, 1, 2, WHITE)


def _eyes(canvas, x, y, look):
    for left in ((x, x + 6) if look == "viewer" else (x,)):
        if look == "happy":
            canvas.stroke([(left + 0.5, y + 4.5), (left + 2.5, y + 1.5), (left + 4.5, y + 4.5)], 1.3, BLACK)
            continue
        canvas.rect(left, y, 5, 6, GRAY)
        canvas.rect(left + 1, y - 1, 3, 8, GRAY)
        canvas.rect(left + 1, y, 3, 6, WHITE)
        canvas.rect(left, y + 1, 5, 4, WHITE)
        dx, dy = {"ahead": (0, 2), "viewer": (2, 2), "up": (1, 0), "down": (0, 3)}[look]
        canvas.rect(left + dx, y + dy, 2, 3, BLACK)


def _emerging(depth):
    """The mouse `depth` pixels down a hole in the ground."""
    canvas = blank()
    y, wide, high = 26.5, 14.5, 3.6
    canvas.ellipse(16, y, wide, high, SILVER)
    canvas.ellipse(16, y, wide - 1.2, high - 1, BLACK)
    _mouse(canvas, base=25 + depth, feet=(), eyes="up" if depth > 8 else "ahead", tail=min(depth, 9) * 0.4)
    front = circle(16, y, wide - 1.2, high - 1, 0, 180, 16)
    canvas.fill([(32, y), *front, (0, y), (0, 32), (32, 32)], CLEAR)
    lip = circle(16, y, wide - 0.6, high - 0.5, 0, 180, 16)
    canvas.stroke(lip, 1.6, GRAY)
    return pixels(canvas)


def _standing(**pose):
    canvas = blank()
    _mouse(canvas, **pose)
    return pixels(canvas)


def _playing(ball, **pose):
    canvas = blank()
    _mouse(canvas, **pose)
    x, y = ball
    canvas.ellipse(x, y, 3.4, 3.4, MAROON)
    canvas.ellipse(x - 0.6, y - 0.6, 2.8, 2.8, RED)
    canvas.rect(x - 2, y - 2, 2, 1, WHITE)
    return pixels(canvas)


def _vanishing():
    """A puff of dust and stars."""
    canvas = blank()
    for x, y, radius in [(9, 23, 5.6), (22, 23, 6), (16, 17, 6.4), (16, 25, 5.4)]:
        canvas.ellipse(x, y, radius, radius * 0.9, SILVER)
    for x, y, radius in [(8.4, 22, 4), (21.4, 21.8, 4.4), (15.2, 15.8, 4.8)]:
        canvas.ellipse(x, y, radius, radius * 0.9, WHITE)
    for x, y in [(5.5, 9.5), (26.5, 7.5), (15.5, 4.5)]:
        canvas.fill([(x, y - 4), (x + 1, y - 1), (x + 4, y), (x + 1, y + 1), (x, y + 4), (x - 1, y + 1), (x - 4, y),
                     (x - 1, y - 1)], YELLOW)
        canvas.ellipse(x, y, 0.8, 0.8, AQUA)
    return pixels(canvas)


def _leftwards():
    return [_emerging(10), _emerging(6), _emerging(2), _standing(),
            _standing(feet=_STRIDE, base=26, tail=1.0), _standing(feet=_CROSS, base=24, tail=-1.0)]


def _play():
    return [
        _standing(eyes="viewer"),
        _playing((4.5, 26.5), x=18, base=26, eyes="down", height=11, tail=1.0),
        _playing((4.5, 13.5), x=18, feet=_KICK, eyes="up"),
        _playing((9.5, 5.5), x=17, base=22, feet=_AIRBORNE, eyes="up", tail=3.0),
        _playing((13.5, 8.5), x=17, eyes="happy", tail=-0.6),
        _vanishing(),
    ]


def walkers():
    """The 18 frames by row: emerging and walking left, emerging and walking right, playing."""
    left = _leftwards()
    return left + [mirrored(rows) for rows in left] + _play()
