"""Small things in the room: the mug, the desk lamp, the cat that sleeps on the warm server."""

from palette import BLACK, WHITE, shade, tint, tone
from raster import circle, curve
from solid import Face

_LAMPLIGHT = tint((255, 240, 180), 30)


def mug(canvas, view, phase):
    """A red mug at the left end of the desk, with curling steam."""
    x, y = view.point(168, 96, 36)
    canvas.ellipse(x + 4, y + 0.4, 8, 2.4, shade(-2))
    canvas.stroke(curve([(x - 4, y - 8), (x - 8, y - 8), (x - 7, y - 3), (x - 4, y - 2.6)]), 1.8, tone("red", 0.35))
    canvas.fill([(x - 5, y - 10), (x + 5, y - 10), (x + 4.6, y), (x - 4.6, y)], tone("red", 0.5))
    canvas.ellipse(x, y, 4.6, 1.8, tone("red", 0.5))
    canvas.rect(x - 3.6, y - 9, 1.8, 9.4, tone("red", 0.82))
    canvas.rect(x + 2.8, y - 9, 2, 9.6, tone("red", 0.3))
    canvas.ellipse(x, y - 10, 5, 2, tone("red", 0.75))
    canvas.ellipse(x, y - 9.8, 4, 1.4, tone("wood", 0.08))
    sway = (0, 1.4, 0, -1.4)[phase]
    for side, rise in ((-1.6, 0), (1.8, 2)):
        points = [(x + side, y - 12 - rise), (x + side + sway, y - 16 - rise), (x + side - sway, y - 20 - rise),
                  (x + side + sway, y - 25 - rise)]
        canvas.stroke(curve(points), 1.1, tone("wall", 0.88))


def lamp(canvas, view):
    """The desk lamp, and its light on the right half of the desk."""
    plate = Face(canvas, view, (150, 114, 36), (1, 0, 0), (0, -1, 0))
    plate.ellipse(110, 24, 20, 18, shade(1))
    plate.ellipse(110, 24, 14, 12, _LAMPLIGHT)
    for i in range(4):
        plate.rect(103 + i % 2, 17 + i % 2, 15, 19, tone("steel", 0.6))
        plate.rect(103 + i % 2, 17.8 + i % 2, 15, 19, WHITE)
    for i in range(4):
        plate.rect(106, 22 + i * 3.4, 9 if i % 2 else 11, 1.2, tone("blue", 0.5))
    x, y = view.point(268, 70, 36)
    canvas.ellipse(x + 2, y + 1, 9, 3.4, shade(-2))
    canvas.ellipse(x, y, 8, 3, tone("leaf", 0.15))
    canvas.ellipse(x, y - 1.4, 8, 3, tone("leaf", 0.5))
    canvas.ellipse(x - 1, y - 1.9, 5, 1.6, tone("leaf", 0.75))
    elbow, head = (x + 9, y - 22), (x - 9, y - 38)
    for shift, width, paint in ((0.4, 2.4, tone("steel", 0.1)), (0, 1.8, tone("steel", 0.7))):
        canvas.stroke([(x + shift, y - 2), (elbow[0] + shift, elbow[1]), (head[0] + shift, head[1])], width, paint)
    canvas.ellipse(elbow[0], elbow[1], 1.8, 1.8, tone("gold", 0.6))
    _shade_of_lamp(canvas, *head)


def _shade_of_lamp(canvas, x, y):
    canvas.ellipse(x - 5.6, y + 10.4, 9.4, 4.8, tone("gold", 0.9))
    canvas.fill([(x - 3, y - 3), (x + 3.4, y - 0.4), (x + 4.4, y + 9), (x - 1, y + 14), (x - 14.4, y + 8),
                 (x - 10, y + 2)], tone("leaf", 0.42))
    canvas.fill([(x - 3, y - 3), (x - 0.6, y - 2), (x - 7, y + 11.6), (x - 14.4, y + 8), (x - 10, y + 2)],
                tone("leaf", 0.72))
    canvas.fill([(x + 3.4, y - 0.4), (x + 4.4, y + 9), (x + 2, y + 11.6)], tone("leaf", 0.15))
    canvas.fill([(x - 14.4, y + 8), (x - 1, y + 14), (x - 2.6, y + 15.4), (x - 13.4, y + 10.6)], tone("gold", 1.0))


def cat(canvas, view, phase):
    """The cat. Its tail hangs over the server's edge and sways; in the third picture an ear twitches."""
    x, y = view.point(110, 62, 60)
    canvas.ellipse(x + 2, y + 1, 15, 4, shade(-2))
    sway = (0, 2.6, 4, 2)[phase]
    tail = curve([(x + 11, y - 2), (x + 17, y + 0.5), (x + 18 + sway * 0.4, y + 9), (x + 15 + sway, y + 16)])
    canvas.stroke(tail, 4, tone("wood", 0.2))
    canvas.stroke(tail, 2.8, tone("wood", 0.62))
    canvas.stroke(tail[-8:], 2.8, tone("beige", 1.0))
    breath = 0.5 if phase in (1, 2) else 0.0
    canvas.ellipse(x + 2, y - 5, 13.6, 7.4 + breath, tone("wood", 0.2))
    canvas.ellipse(x + 2, y - 5, 12.8, 6.6 + breath, tone("wood", 0.56))
    canvas.ellipse(x + 1, y - 6.4 - breath, 10.4, 4.4, tone("wood", 0.7))
    for i in range(3):
        u = x + 0.5 + i * 4
        canvas.stroke([(u, y - 11 - breath + i * 0.4), (u + 1, y - 7.6)], 1.4, tone("wood", 0.36))
    canvas.ellipse(x - 6, y - 0.8, 4, 1.8, tone("beige", 1.0))
    _head(canvas, x - 9, y - 5.4, 1.6 if phase == 2 else 0.0)


def _head(canvas, x, y, twitch):
    for side, lift in ((-1, 0.0), (1, twitch)):
        ear = [(x + side * 5.2, y - 1), (x + side * 4.6 + lift, y - 8 + lift), (x + side * 0.6, y - 4)]
        canvas.fill(ear, tone("wood", 0.3))
        canvas.fill([(a * 0.62 + (x + side * 3.2) * 0.38, b * 0.62 + (y - 4) * 0.38) for a, b in ear],
                    tone("red", 0.85))
    canvas.ellipse(x, y, 6.4, 5.4, tone("wood", 0.2))
    canvas.ellipse(x, y, 5.8, 4.8, tone("wood", 0.66))
    canvas.ellipse(x, y + 2, 3.6, 2.6, tone("beige", 1.0))
    for side in (-1, 1):
        canvas.stroke(circle(x + side * 2.9, y - 1, 1.5, 1.2, 10, 170, 6), 0.9, BLACK)
    canvas.ellipse(x, y + 0.9, 0.9, 0.7, tone("red", 0.7))
